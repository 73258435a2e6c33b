#include "QuorvaneApp/Views/Controls/Appearance.h"

#include <QDir>
#include <QGuiApplication>
#include <QPixmap>

/// Writes the program's icon into a folder, "SIZE.png" for each size that a theme of icons has. The build runs it, without a
/// screen; it is not installed.
int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(count, arguments);
    if (count != 2) {
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(arguments[1]));
    for (const int size : {16, 24, 32, 48, 64, 128, 256, 512}) {
        if (!Appearance::applicationPixmap(size).save(folder.filePath(QStringLiteral("%1.png").arg(size)))) {
            return 1;
        }
    }
    return 0;
}
