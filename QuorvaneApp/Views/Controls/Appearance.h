#pragma once

#include "ScanKit/Model/Flag.h"

#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QIcon>
#include <QPalette>
#include <QPixmap>

/// Colours and small pictures of the window. All are derived from the palette, light or dark, and severity is
/// never told by colour alone: each has a shape of its own.
namespace Appearance {

bool isDark(const QPalette& palette);
/// The contrast ratio of two opaque colours, 1 to 21; 4.5 is what small text needs.
double contrast(const QColor& a, const QColor& b);
/// `amount` of b in a, 0 to 1.
QColor mixed(const QColor& a, const QColor& b, double amount);

/// For explanations and captions; still has the contrast that small text needs.
QColor secondaryText(const QPalette& palette);
QColor separator(const QPalette& palette);
/// Legible as text on the palette's base and window colours.
QColor severityColor(ScanKit::Flag::Severity severity, const QPalette& palette);
/// A calm background for a strip of this severity, on which the palette's text is legible.
QColor severityBackground(ScanKit::Flag::Severity severity, const QPalette& palette);

/// High: an octagon with an exclamation mark; medium: a triangle with one; low: a ring with an "i".
QPixmap severityPixmap(ScanKit::Flag::Severity severity, int size, double pixelRatio, const QColor& color);
/// The size of such a picture beside text of this font.
int glyphSize(const QFontMetrics& metrics);
/// The program's icon, drawn in the sizes that desktops ask a window for.
QIcon applicationIcon();
/// The same in one size, in pixels of the window system.
QPixmap applicationPixmap(int size, double pixelRatio = 1);

/// The palette with the secondary text colour in place of the text's.
QPalette withSecondaryText(QPalette palette);
/// The font some steps larger or smaller (in points), perhaps bold.
QFont adjusted(QFont font, double points, bool isBold = false);

}  // namespace Appearance
