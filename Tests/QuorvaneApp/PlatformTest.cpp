#include "QuorvaneApp/Platform/DialogFolderChooser.h"
#include "QuorvaneApp/Platform/FileRevealer.h"
#include "Tests/QuorvaneApp/Words.h"

#include <optional>

#include <QApplication>
#include <QDBusConnection>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QProcess>
#include <QTemporaryDir>
#include <QUrl>
#include <QtTest>

/// Stands in for a file manager on the bus, and for the desktop that opens folders.
class FileManager : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    QStringList selected;
    QList<QUrl> opened;

public Q_SLOTS:
    Q_SCRIPTABLE void ShowItems(const QStringList& addresses, const QString&) { selected = addresses; }
    void open(const QUrl& url) { opened.push_back(url); }
};

/// The adapters to the desktop, against a bus of the test's own and Qt's own folder panel.
class PlatformTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        bus_.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address"_s});
        QVERIFY(bus_.waitForStarted());
        QVERIFY(bus_.waitForReadyRead());
        address_ = QString::fromUtf8(bus_.readLine()).trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", address_.toUtf8());
    }

    void cleanupTestCase() {
        bus_.terminate();
        QVERIFY(bus_.waitForFinished());
    }

    void filesAreSelectedInTheFileManager() {
        FileManager fileManager;
        QDBusConnection server = QDBusConnection::connectToBus(address_, u"server"_s);
        QVERIFY(server.registerObject(u"/org/freedesktop/FileManager1"_s, &fileManager,
                                      QDBusConnection::ExportScriptableSlots));
        QVERIFY(server.registerService(u"org.freedesktop.FileManager1"_s));
        makeFileRevealer()->reveal({"/tmp/a b/NOTICE.txt", "/tmp/a b/Licenses ü.csv"});
        QTRY_COMPARE(fileManager.selected, (QStringList{u"file:///tmp/a%20b/NOTICE.txt"_s,
                                                        u"file:///tmp/a%20b/Licenses%20%C3%BC.csv"_s}));
        QDBusConnection::disconnectFromBus(u"server"_s);
    }

    void withoutAFileManagerTheFolderIsOpened() {
        FileManager desktop;
        QDesktopServices::setUrlHandler(u"file"_s, &desktop, "open");
        const auto revealer = makeFileRevealer();
        revealer->reveal({});
        revealer->reveal({"/tmp/a b/NOTICE.txt", "/tmp/a b/Licenses.csv"});
        QTRY_COMPARE(desktop.opened, QList<QUrl>{QUrl::fromLocalFile(u"/tmp/a b"_s)});
        QDesktopServices::unsetUrlHandler(u"file"_s);
    }

    void thePanelAsksForOneFolder() {
        struct Row {
            const char* name;
            bool showsHidden, createsFolders, confirms;
        };
        for (const Row& row :
             {Row{"plain", false, false, true}, Row{"hidden folders", true, false, true},
              Row{"new folders", false, true, true}, Row{"cancelled", false, false, false}}) {
            const QTemporaryDir folder;
            QString chosen;
            DialogFolderChooser().choose({.message = u"Choose one."_s,
                                          .prompt = u"Take"_s,
                                          .showsHidden = row.showsHidden,
                                          .createsFolders = row.createsFolders,
                                          .start = folder.path().toStdString()},
                                         [&chosen](const std::filesystem::path& path) {
                                             chosen = QString::fromStdString(path.string());
                                         });
            auto* const panel = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            QVERIFY2(panel != nullptr, row.name);
            QCOMPARE(panel->windowTitle(), u"Choose one."_s);
            QCOMPARE(panel->labelText(QFileDialog::Accept), u"Take"_s);
            QCOMPARE(panel->fileMode(), QFileDialog::Directory);
            QVERIFY2(panel->testOption(QFileDialog::ShowDirsOnly), row.name);
            QVERIFY2(panel->testOption(QFileDialog::ReadOnly) != row.createsFolders, row.name);
            QVERIFY2(panel->filter().testFlag(QDir::Hidden) == row.showsHidden, row.name);
            QCOMPARE(panel->directory().path(), folder.path());
            // Titles are cut on most desktops: the message stands in the panel, above all else.
            const auto* const message = panel->findChild<QLabel*>(u"folderMessage"_s);
            QVERIFY2(message != nullptr && message->isVisible() && message->text() == u"Choose one."_s,
                     row.name);
            for (const QWidget* const part : panel->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
                QVERIFY2(part == message || !part->isVisible() || part->y() >= message->geometry().bottom(),
                         qPrintable(part->objectName()));
            }
            QMetaObject::invokeMethod(panel, row.confirms ? "accept" : "reject");
            QCOMPARE(chosen, row.confirms ? folder.path() : QString());
        }
    }

private:
    QProcess bus_;
    QString address_;
};

int main(int argc, char** argv) {
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(argc, argv);
    PlatformTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "PlatformTest.moc"
