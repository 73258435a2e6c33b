#pragma once

#include <vector>

class QWidget;

/// The way that the Tab key takes through a window.
namespace TabOrder {

/// Leads through the parts in this order, and in each through its controls as they were put into it. To be called
/// again when a part was filled anew: what is new comes last of all otherwise, wherever it stands.
void lead(const std::vector<QWidget*>& parts);

}  // namespace TabOrder
