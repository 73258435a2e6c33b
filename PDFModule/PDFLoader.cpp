#include "PDFModule/PDFModule.h"

#include "BuildVersion.h"

#include <stdexcept>
#include <string>

#include <dlfcn.h>

namespace {

const PDFModule& load() {
    void* const library = dlopen(PDFModule::file, RTLD_LAZY | RTLD_LOCAL);
    const void* const symbol = library != nullptr ? dlsym(library, PDFModule::symbol) : nullptr;
    if (symbol == nullptr) {
        throw std::runtime_error(std::string("The part of Quorvane that makes PDFs can't be loaded: ") +
                                 dlerror());
    }
    const PDFModule& module = *static_cast<const PDFModule*>(symbol);
    if (module.number != BuildVersion::number || module.commit != BuildVersion::commit) {
        throw std::runtime_error(std::string(PDFModule::file) + " belongs to another build of Quorvane");
    }
    return module;
}

const PDFModule& pdfModule() {
    static const PDFModule& module = load();
    return module;
}

}  // namespace

namespace ScanKit {

std::string PDFReport::document(const ScanResult& result, const ReportOptions& options) {
    return pdfModule().document(result, options);
}

std::optional<std::string> PDFReport::warning(const ScanResult& result, const ReportOptions& options) {
    return pdfModule().warning(result, options);
}

}  // namespace ScanKit
