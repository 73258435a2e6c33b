#include "QuorvaneApp/Model/WindowMemory.h"

#include "ScanKit/Model/EnumerationTable.h"

#include <array>

#include <QSettings>

namespace {

struct PartRow {
    WindowMemory::Part value;
    const char* key;
};
constexpr auto partRows = std::to_array<PartRow>({
    {WindowMemory::Part::geometry, "window/geometry"},
    {WindowMemory::Part::sidebar, "window/sidebar"},
    {WindowMemory::Part::detailsBeside, "window/detailsBeside"},
    {WindowMemory::Part::detailsBelow, "window/detailsBelow"},
    {WindowMemory::Part::columns, "window/columns"},
});
static_assert(ScanKit::hasRowForEachEnumerator(partRows), "each enumerator needs its row here");

QString keyOf(WindowMemory::Part part) {
    return QString::fromLatin1(ScanKit::rowOf(partRows, part).key);
}

}  // namespace

QByteArray WindowMemory::remembered(Part part) const {
    return persist_ ? QSettings().value(keyOf(part)).toByteArray() : QByteArray();
}

void WindowMemory::save(Part part, const QByteArray& value) const {
    if (persist_) {
        QSettings().setValue(keyOf(part), value);
    }
}
