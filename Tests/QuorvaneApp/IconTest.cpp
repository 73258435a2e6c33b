#include "QuorvaneApp/Views/Controls/Appearance.h"

#include <QFile>
#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QPolygonF>
#include <QTest>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {

/// Paints the few shapes that the icon's drawing is made of; false for one that it does not know.
bool paint(QPainter& painter, const QXmlStreamReader& element) {
    const auto number = [&](const QString& name) { return element.attributes().value(name).toDouble(); };
    painter.setBrush(QColor(element.attributes().value(u"fill"_s).toString()));
    if (element.name() == u"rect") {
        painter.drawRoundedRect(
            QRectF(number(u"x"_s), number(u"y"_s), number(u"width"_s), number(u"height"_s)), number(u"rx"_s),
            number(u"rx"_s));
    } else if (element.name() == u"circle") {
        painter.drawEllipse(QPointF(number(u"cx"_s), number(u"cy"_s)), number(u"r"_s), number(u"r"_s));
    } else if (element.name() == u"polygon") {
        QPolygonF polygon;
        for (const QString& point : element.attributes().value(u"points"_s).toString().split(u' ')) {
            polygon << QPointF(point.section(u',', 0, 0).toDouble(), point.section(u',', 1).toDouble());
        }
        painter.drawPolygon(polygon);
    } else {
        return false;
    }
    return true;
}

}  // namespace

class IconTest : public QObject {
    Q_OBJECT

private slots:
    /// Desktops take the drawing, the window takes what the program paints: people see one icon.
    void theDrawingForDesktopsIsTheWindowsIcon() {
        QFile file(QStringLiteral(QUORVANE_ICON_DRAWING));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QImage drawn(64, 64, QImage::Format_ARGB32_Premultiplied);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        QXmlStreamReader reader(&file);
        QVERIFY(reader.readNextStartElement());
        QCOMPARE(reader.attributes().value(u"viewBox"_s).toString(), u"0 0 64 64"_s);
        while (reader.readNextStartElement()) {
            QVERIFY2(paint(painter, reader), qPrintable(reader.name().toString()));
            reader.skipCurrentElement();
        }
        painter.end();
        const QImage shown = Appearance::applicationPixmap(64).toImage().convertToFormat(drawn.format());
        QCOMPARE(drawn, shown);
    }
};

QTEST_MAIN(IconTest)
#include "IconTest.moc"
