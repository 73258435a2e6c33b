#include "QuorvaneApp/Model/Texts.h"

#include "ScanKit/Support/Paths.h"

#include <QFile>
#include <QLocale>
#include <QTextDocument>

namespace Texts {
namespace {

constexpr qsizetype longestOneLine = 500;
constexpr qsizetype longestLine = 2000;

}  // namespace

QString fromUtf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string toUtf8(const QString& text) {
    return text.toStdString();
}

std::filesystem::path toPath(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

QString fromPath(const std::filesystem::path& path) {
    return QFile::decodeName(QByteArray::fromStdString(path.native()));
}

QString shown(const std::filesystem::path& path) {
    // Relative to a folder below it, so that it is written in full.
    return fromUtf8(ScanKit::displayPath(path, path / "below"));
}

QString shownName(const std::filesystem::path& path) {
    return fromUtf8(ScanKit::displayName(path));
}

QString oneLine(QString text) {
    if (text.size() > longestOneLine) {
        text.truncate(longestOneLine - 1);
        text += QChar(0x2026);
    }
    for (QChar& character : text) {
        const bool breaks = character.category() == QChar::Other_Control ||
                            character.category() == QChar::Separator_Line ||
                            character.category() == QChar::Separator_Paragraph;
        if (breaks) {
            character = QLatin1Char(' ');
        }
    }
    return text;
}

QString withoutEndlessLines(const QString& text) {
    QString broken;
    broken.reserve(text.size());
    qsizetype length = 0;
    for (const QChar character : text) {
        length = character == QLatin1Char('\n') ? 0 : length + 1;
        // Never between the two halves of one character.
        if (length > longestLine && !character.isLowSurrogate()) {
            broken += QLatin1Char('\n');
            length = 1;
        }
        broken += character;
    }
    return broken;
}

QString toolTip(const QString& text) {
    return text.isEmpty() ? QString() : Qt::convertFromPlainText(text);
}

QString number(std::size_t count) {
    return QLocale().toString(static_cast<qulonglong>(count));
}

QString counted(std::size_t count, const QString& one, const QString& several) {
    return QStringLiteral("%1 %2").arg(number(count), count == 1 ? one : several);
}

}  // namespace Texts
