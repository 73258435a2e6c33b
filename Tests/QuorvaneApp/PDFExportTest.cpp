#include "QuorvaneApp/Model/AppModel.h"

#include "Tests/QuorvaneApp/AppFixture.h"

#include <QFile>
#include <QtTest>

using ScanKit::ReportFormats;

/// The PDF as the program makes it: by a module that is loaded for the first one, beside all that the window has loaded.
class PDFExportTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void comesFromTheModule() {
        ModelFixture fixture(alwaysFinding(findings({package("pad")})));
        QVERIFY(fixture.open());
        fixture.chooser.answer = fixture.project.folder("Out");
        for (std::size_t round = 1; round <= 2; ++round) {
            fixture.model.exportReports(ReportFormats::pdf);
            QTRY_COMPARE(fixture.revealer.revealed.size(), round);
            QCOMPARE(fixture.revealer.revealed.back().size(), std::size_t{1});
            QFile file(QString::fromStdString(fixture.revealer.revealed.back().front().string()));
            QVERIFY(file.open(QIODevice::ReadOnly));
            QVERIFY(file.readAll().startsWith("%PDF-"));
        }
    }
};

QTEST_MAIN(PDFExportTest)
#include "PDFExportTest.moc"
