#include "PDFModule/PDFModule.h"

#include "BuildVersion.h"

/// The module's one symbol.
extern "C" __attribute__((visibility("default"))) const PDFModule quorvanePDFModule{
    .number = BuildVersion::number,
    .commit = BuildVersion::commit,
    .document = ScanKit::PDFReport::document,
    .warning = ScanKit::PDFReport::warning,
};
