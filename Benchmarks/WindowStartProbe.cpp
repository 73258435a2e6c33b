/// Loaded into the desktop program before all else: tells on standard output how long after QUORVANE_STARTED (the monotonic
/// clock, in nanoseconds) the window showed what QUORVANE_AWAITED names, a widget, and ends the program then. A table counts
/// once it has rows.

#include <chrono>
#include <cstdio>
#include <cstdlib>

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

namespace {

class FirstPaint : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && !isPainted_ && isAwaited(watched)) {
            isPainted_ = true;
            // Behind the painting of the whole window, which this event is a part of.
            QTimer::singleShot(0, qApp, tell);
        }
        return false;
    }

private:
    static bool isAwaited(QObject* watched) {
        static const QString name = qEnvironmentVariable("QUORVANE_AWAITED");
        if (const auto* const view = qobject_cast<QAbstractItemView*>(watched->parent())) {
            return view->objectName() == name && view->viewport() == watched && view->model()->rowCount() > 0;
        }
        return watched->objectName() == name;
    }
    static void tell() {
        const long long started = qEnvironmentVariable("QUORVANE_STARTED").toLongLong();
        const std::chrono::nanoseconds now = std::chrono::steady_clock::now().time_since_epoch();
        std::printf("%lld\n", static_cast<long long>(now.count()) - started);
        std::fflush(stdout);
        std::_Exit(0);
    }

    bool isPainted_ = false;
};

void watchPainting() {
    qApp->installEventFilter(new FirstPaint(qApp));
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(watchPainting)
