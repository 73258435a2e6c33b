#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

/// The real program, started and ended.
class ProgramTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void saysItsVersionAndRefusesTwoFolders() {
        QProcess process;
        process.start(QStringLiteral(QUORVANE_APP_PATH), {QStringLiteral("--version")});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 0);
        QVERIFY(process.readAll().startsWith("Quorvane "));
        process.start(QStringLiteral(QUORVANE_APP_PATH), {QStringLiteral("a"), QStringLiteral("b")});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 2);
    }

    void opensAFolderAndStaysUp() {
        const QTemporaryDir folder;
        QProcess process;
        process.start(QStringLiteral(QUORVANE_APP_PATH), {folder.path()});
        QVERIFY(process.waitForStarted());
        QVERIFY2(!process.waitForFinished(1500), "the program ended by itself");
        process.terminate();
        QVERIFY(process.waitForFinished());
        QVERIFY2(!process.readAllStandardError().contains("Warning"), "the program warned");
    }
};

QTEST_GUILESS_MAIN(ProgramTest)
#include "ProgramTest.moc"
