#pragma once

#include <QByteArray>

/// What the window remembers of itself between launches: sizes that the user chose. Apart from the settings,
/// which are about reports. Remembers nothing unless `persist` is on.
class WindowMemory {
public:
    enum class Part {
        geometry,       ///< place and size of the window
        sidebar,        ///< the width of the filters
        detailsBeside,  ///< the width of the details
        detailsBelow,   ///< the height of the details in a narrow window
        columns,        ///< the widths of the table's columns
    };

    explicit WindowMemory(bool persist) : persist_(persist) {}

    /// As it was saved; empty when it never was.
    QByteArray remembered(Part part) const;
    void save(Part part, const QByteArray& value) const;

private:
    bool persist_;
};
