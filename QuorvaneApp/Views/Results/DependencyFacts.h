#pragma once

#include "QuorvaneApp/Views/Controls/ScrolledColumn.h"
#include "ScanKit/Model/Dependency.h"

#include <functional>
#include <string>
#include <vector>

class QGridLayout;
class QVBoxLayout;

/// The facts about one dependency: flags, notes, and titled lines. All text is plain.
class DependencyFacts : public ScrolledColumn {
    Q_OBJECT

public:
    explicit DependencyFacts(std::function<void(const QString& address)> openLink, QWidget* parent = nullptr);

    /// Takes the place of what was shown before. `namedIn` is the file that names the package; empty when unknown.
    void show(const ScanKit::Dependency& dependency, const QString& namedIn);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void addFlags(QVBoxLayout& column, const ScanKit::Dependency& dependency);
    void addNotes(QVBoxLayout& column, const ScanKit::Dependency& dependency);
    void addFacts(const ScanKit::Dependency& dependency, const QString& namedIn);
    void addTitled(const QString& title, QWidget* content);
    QWidget* makeSource(const std::string& source);
    void arrange();

    std::function<void(const QString&)> openLink_;
    QGridLayout* grid_ = nullptr;   ///< of the titled lines
    std::vector<QWidget*> titled_;  ///< in order; as many beside each other as there is room for
};
