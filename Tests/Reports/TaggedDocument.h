#pragma once

#include <functional>
#include <string>
#include <vector>

class QPDF;

namespace ScanKit {

/// What a machine can tell against a document that claims to be readable for everybody (PDF/UA-1), a sentence each; none
/// when there is nothing. `damage` is done to the document before it is looked at.
std::vector<std::string> faultsForListeners(const std::string& document,
                                            const std::function<void(QPDF&)>& damage = {});

}  // namespace ScanKit
