#pragma once

#include "ScanKit/Reports/PDF/PDFPages.h"

#include <string>

/// What a document says about itself, in the two forms that programs look for.
namespace ScanKit::PDFMetadata {

/// The date as a PDF writes it: "D:20260105140322Z".
std::string date(Date date);
/// The properties as XMP, with the claim to be readable for everybody (PDF/UA-1). Padded by nothing: it is not meant to
/// be changed in place.
std::string packet(const PDFPages::Properties& properties);

}  // namespace ScanKit::PDFMetadata
