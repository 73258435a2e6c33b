#include "QuorvaneApp/Platform/DialogFolderChooser.h"
#include "QuorvaneApp/Platform/FileRevealer.h"

#include <optional>

#include <QApplication>
#include <QDBusConnection>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
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
    void initTestCase();
    void cleanupTestCase();
    void filesAreSelectedInTheFileManager();
    void withoutAFileManagerTheFolderIsOpened();
    void thePanelAsksForOneFolder_data();
    void thePanelAsksForOneFolder();

private:
    QProcess bus_;
    QString address_;
};

void PlatformTest::initTestCase() {
    bus_.start(QStringLiteral("dbus-daemon"),
               {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    QVERIFY(bus_.waitForStarted());
    QVERIFY(bus_.waitForReadyRead());
    address_ = QString::fromUtf8(bus_.readLine()).trimmed();
    qputenv("DBUS_SESSION_BUS_ADDRESS", address_.toUtf8());
}

void PlatformTest::cleanupTestCase() {
    bus_.terminate();
    QVERIFY(bus_.waitForFinished());
}

void PlatformTest::filesAreSelectedInTheFileManager() {
    FileManager fileManager;
    QDBusConnection server = QDBusConnection::connectToBus(address_, QStringLiteral("server"));
    QVERIFY(server.registerObject(QStringLiteral("/org/freedesktop/FileManager1"), &fileManager,
                                  QDBusConnection::ExportScriptableSlots));
    QVERIFY(server.registerService(QStringLiteral("org.freedesktop.FileManager1")));
    makeFileRevealer()->reveal({"/tmp/a b/NOTICE.txt", "/tmp/a b/Licenses ü.csv"});
    QTRY_COMPARE(fileManager.selected,
                 (QStringList{QStringLiteral("file:///tmp/a%20b/NOTICE.txt"),
                              QStringLiteral("file:///tmp/a%20b/Licenses%20%C3%BC.csv")}));
    QDBusConnection::disconnectFromBus(QStringLiteral("server"));
}

void PlatformTest::withoutAFileManagerTheFolderIsOpened() {
    FileManager desktop;
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &desktop, "open");
    const auto revealer = makeFileRevealer();
    revealer->reveal({});
    revealer->reveal({"/tmp/a b/NOTICE.txt", "/tmp/a b/Licenses.csv"});
    QTRY_COMPARE(desktop.opened, QList<QUrl>{QUrl::fromLocalFile(QStringLiteral("/tmp/a b"))});
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
}

void PlatformTest::thePanelAsksForOneFolder_data() {
    QTest::addColumn<bool>("showsHidden");
    QTest::addColumn<bool>("createsFolders");
    QTest::addColumn<bool>("confirms");
    QTest::newRow("plain") << false << false << true;
    QTest::newRow("hidden folders") << true << false << true;
    QTest::newRow("new folders") << false << true << true;
    QTest::newRow("cancelled") << false << false << false;
}

void PlatformTest::thePanelAsksForOneFolder() {
    QFETCH(bool, showsHidden);
    QFETCH(bool, createsFolders);
    QFETCH(bool, confirms);
    const QTemporaryDir folder;
    std::optional<std::filesystem::path> chosen;
    DialogFolderChooser().choose({.message = QStringLiteral("Choose one."),
                                  .prompt = QStringLiteral("Take"),
                                  .showsHidden = showsHidden,
                                  .createsFolders = createsFolders},
                                 [&chosen](const std::filesystem::path& path) { chosen = path; });
    auto* const panel = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    QVERIFY(panel != nullptr);
    QCOMPARE(panel->windowTitle(), QStringLiteral("Choose one."));
    QCOMPARE(panel->labelText(QFileDialog::Accept), QStringLiteral("Take"));
    QCOMPARE(panel->fileMode(), QFileDialog::Directory);
    QVERIFY(panel->testOption(QFileDialog::ShowDirsOnly));
    QCOMPARE(panel->testOption(QFileDialog::ReadOnly), !createsFolders);
    QCOMPARE(panel->filter().testFlag(QDir::Hidden), showsHidden);
    panel->setDirectory(folder.path());
    QMetaObject::invokeMethod(panel, confirms ? "accept" : "reject");
    QCOMPARE(chosen.has_value(), confirms);
    QVERIFY(!confirms || *chosen == folder.path().toStdString());
}

int main(int argc, char** argv) {
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(argc, argv);
    PlatformTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "PlatformTest.moc"
