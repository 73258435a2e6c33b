#include "QuorvaneApp/Views/Controls/Appearance.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <QPainter>
#include <QPainterPath>

namespace Appearance {
namespace {

using Severity = ScanKit::Flag::Severity;

/// What the guidelines for accessible pages ask of small text.
constexpr double legible = 4.5;

/// The light that an sRGB channel stands for: contrast is a matter of light, not of numbers in a palette.
double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

/// Green looks far brighter to the eye than blue of the same light.
double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QColor hueOf(Severity severity) {
    switch (severity) {
        case Severity::high:
            return {200, 40, 45};
        case Severity::medium:
            return {190, 120, 0};
        case Severity::low:
            return {80, 110, 150};
    }
    return {};
}

/// The colour moved towards the text's colour until it is legible on both backgrounds.
QColor madeLegible(const QColor& color, const QPalette& palette) {
    QColor result = color;
    for (double amount = 0; amount <= 1; amount += 0.05) {
        result = mixed(color, palette.color(QPalette::Text), amount);
        if (contrast(result, palette.color(QPalette::Base)) >= legible &&
            contrast(result, palette.color(QPalette::Window)) >= legible) {
            break;
        }
    }
    return result;
}

QPainterPath shapeOf(Severity severity) {
    QPainterPath path;
    switch (severity) {
        case Severity::high:
            path.addPolygon(QPolygonF(
                {{4.8, 1}, {11.2, 1}, {15, 4.8}, {15, 11.2}, {11.2, 15}, {4.8, 15}, {1, 11.2}, {1, 4.8}}));
            break;
        case Severity::medium:
            path.addPolygon(QPolygonF({{8, 1}, {15.5, 14.5}, {0.5, 14.5}}));
            break;
        case Severity::low:
            path.addEllipse(QRectF(1.25, 1.25, 13.5, 13.5));
            break;
    }
    path.closeSubpath();
    return path;
}

/// A bar and a dot: an exclamation mark, or an "i" upside down. In a canvas of 16 by 16.
void addMark(QPainterPath& shape, Severity severity) {
    switch (severity) {
        case Severity::high:
            shape.addRoundedRect(QRectF(7.1, 4, 1.8, 5.2), 0.6, 0.6);
            shape.addEllipse(QRectF(7, 10.4, 2, 2));
            break;
        case Severity::medium:
            shape.addRoundedRect(QRectF(7.15, 5.4, 1.7, 4.8), 0.6, 0.6);
            shape.addEllipse(QRectF(7.05, 11.2, 1.9, 1.9));
            break;
        case Severity::low:
            shape.addEllipse(QRectF(7, 3.8, 2, 2));
            shape.addRoundedRect(QRectF(7.1, 6.8, 1.8, 5.4), 0.6, 0.6);
            break;
    }
}

/// Three lines of a list, the last one flagged, on a sheet.
void drawIcon(QPainter& painter) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(38, 84, 124));
    painter.drawRoundedRect(QRectF(2, 2, 60, 60), 13, 13);
    painter.setBrush(QColor(250, 250, 250));
    painter.drawRoundedRect(QRectF(14, 10, 36, 44), 4, 4);
    painter.setBrush(QColor(120, 140, 160));
    for (const double y : {19.0, 29.0, 39.0}) {
        painter.drawRoundedRect(QRectF(28, y, 17, 4), 2, 2);
    }
    painter.setBrush(QColor(46, 139, 87));
    painter.drawEllipse(QRectF(18.5, 18, 6, 6));
    painter.drawEllipse(QRectF(18.5, 28, 6, 6));
    painter.setBrush(QColor(214, 137, 16));
    painter.drawPolygon(QPolygonF({{21.5, 37.5}, {25.5, 44.5}, {17.5, 44.5}}));
}

}  // namespace

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightnessF() < palette.color(QPalette::WindowText).lightnessF();
}

double contrast(const QColor& a, const QColor& b) {
    const double bright = std::max(luminance(a), luminance(b));
    const double dim = std::min(luminance(a), luminance(b));
    return (bright + 0.05) / (dim + 0.05);
}

QColor mixed(const QColor& a, const QColor& b, double amount) {
    const auto between = [amount](float from, float to) {
        return static_cast<float>(from + (to - from) * amount);
    };
    return QColor::fromRgbF(between(a.redF(), b.redF()), between(a.greenF(), b.greenF()),
                            between(a.blueF(), b.blueF()));
}

QColor secondaryText(const QPalette& palette) {
    const QColor faded = mixed(palette.color(QPalette::WindowText), palette.color(QPalette::Window), 0.4);
    return madeLegible(faded, palette);
}

QColor separator(const QPalette& palette) {
    return mixed(palette.color(QPalette::Window), palette.color(QPalette::WindowText),
                 isDark(palette) ? 0.2 : 0.16);
}

QColor severityColor(Severity severity, const QPalette& palette) {
    return madeLegible(hueOf(severity), palette);
}

QColor severityBackground(Severity severity, const QPalette& palette) {
    return mixed(palette.color(QPalette::Base), hueOf(severity), isDark(palette) ? 0.22 : 0.12);
}

QPixmap severityPixmap(Severity severity, int size, double pixelRatio, const QColor& color) {
    QPixmap pixmap((QSizeF(size, size) * pixelRatio).toSize());
    pixmap.setDevicePixelRatio(pixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 16.0, size / 16.0);
    QPainterPath shape = shapeOf(severity);
    // The mark is a hole in the shape, and so is the inside of the ring: whatever is behind shows through.
    shape.setFillRule(Qt::OddEvenFill);
    if (severity == Severity::low) {
        shape.addEllipse(QRectF(2.7, 2.7, 10.6, 10.6));
    }
    addMark(shape, severity);
    painter.fillPath(shape, color);
    return pixmap;
}

int glyphSize(const QFontMetrics& metrics) {
    return metrics.height() * 4 / 5 + 1;
}

QIcon applicationIcon() {
    // No larger ones: each is drawn, and sent to the window system, before the window is seen.
    constexpr std::array sizes{16, 24, 32, 48, 64, 128};
    QIcon icon;
    for (const int size : sizes) {
        icon.addPixmap(applicationPixmap(size));
    }
    return icon;
}

QPixmap applicationPixmap(int size, double pixelRatio) {
    QPixmap pixmap((QSizeF(size, size) * pixelRatio).toSize());
    pixmap.setDevicePixelRatio(pixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 64.0, size / 64.0);
    drawIcon(painter);
    return pixmap;
}

QPalette withSecondaryText(QPalette palette) {
    const QColor color = secondaryText(palette);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        palette.setColor(group, QPalette::WindowText, color);
        palette.setColor(group, QPalette::Text, color);
    }
    return palette;
}

QFont adjusted(QFont font, double points, bool isBold) {
    // A font that was set in pixels has -1 points: it must not vanish.
    font.setPointSizeF(std::max(font.pointSizeF() + points, 6.0));
    font.setBold(isBold);
    return font;
}

}  // namespace Appearance
