#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

/// The real program, started and ended.
class ProgramTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void saysItsVersionAndRefusesTwoFolders();
    void opensAFolderAndStaysUp();

private:
    static void run(QProcess& process, const QStringList& arguments) {
        process.start(QStringLiteral(QUORVANE_APP_PATH), arguments);
        QVERIFY(process.waitForStarted());
    }
};

void ProgramTest::saysItsVersionAndRefusesTwoFolders() {
    QProcess version;
    run(version, {QStringLiteral("--version")});
    QVERIFY(version.waitForFinished());
    QCOMPARE(version.exitCode(), 0);
    QVERIFY(version.readAll().startsWith("Quorvane "));
    QProcess twoFolders;
    run(twoFolders, {QStringLiteral("a"), QStringLiteral("b")});
    QVERIFY(twoFolders.waitForFinished());
    QCOMPARE(twoFolders.exitCode(), 2);
}

void ProgramTest::opensAFolderAndStaysUp() {
    const QTemporaryDir folder;
    QProcess process;
    run(process, {folder.path()});
    QVERIFY2(!process.waitForFinished(1500), "the program ended by itself");
    process.terminate();
    QVERIFY(process.waitForFinished());
    QVERIFY2(!process.readAllStandardError().contains("Warning"), "the program warned");
}

QTEST_GUILESS_MAIN(ProgramTest)
#include "ProgramTest.moc"
