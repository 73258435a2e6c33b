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

    void answersInWordsWithoutAScreen() {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        environment.remove(QStringLiteral("DISPLAY"));
        environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
        for (const auto& [argument, words] :
             {std::pair{"--version", "Quorvane "}, {"-v", "Quorvane "}, {"--help", "Usage: "}}) {
            QProcess process;
            process.setProcessEnvironment(environment);
            process.start(QStringLiteral(QUORVANE_APP_PATH), {QString::fromLatin1(argument)});
            QVERIFY2(process.waitForFinished(), argument);
            QCOMPARE(process.exitStatus(), QProcess::NormalExit);
            QCOMPARE(process.exitCode(), 0);
            QVERIFY2(process.readAllStandardOutput().startsWith(words), argument);
        }
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
