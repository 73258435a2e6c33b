#pragma once

/// To be included before libqpdf's headers. Clang refuses version 11's JSON.hh in C++20, where lists can be destroyed while
/// compiling and so want to know what they hold. Nothing here uses it, and the other headers need its name alone.
#ifdef __clang__
#define JSON_HH
class JSON;
#endif
