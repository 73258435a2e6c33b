#include "ScanKit/ScanKit.h"

#include <algorithm>

int main(int count, char** arguments) {
    const std::filesystem::path folder = count > 1 ? arguments[1] : ".";
    const ScanKit::Detection found = ScanKit::detect(folder);
    const ScanKit::ScanResult result =
        ScanKit::Scanner::scan(folder, {.ecosystems = found.ecosystemsToRead({})}, found);
    const auto isMissing = [](const ScanKit::Dependency& one) {
        return std::ranges::find(one.flags, ScanKit::Flag::missing) != one.flags.end();
    };
    return std::ranges::any_of(result.dependencies, isMissing) ? 1 : 0;
}
