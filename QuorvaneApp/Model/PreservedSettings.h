#pragma once

#include <QString>

/// The two values that the program keeps between launches, in the user defaults. Each is written at once.
class PreservedSettings {
public:
    /// When not `persist`, nothing is read and nothing written.
    explicit PreservedSettings(bool persist) : persist_(persist) {}

    bool persist() const { return persist_; }
    /// False when none was saved.
    bool includeDev() const;
    /// Empty when none was saved.
    QString preparedBy() const;
    void saveIncludeDev(bool includeDev) const;
    void savePreparedBy(const QString& preparedBy) const;

private:
    bool persist_;
};
