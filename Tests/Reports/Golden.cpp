#include "Tests/Reports/Golden.h"

#include "Tests/Builders/TemporaryFolder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

namespace ScanKit {

void expectGolden(const std::string& name, const std::string& written) {
    const std::filesystem::path file = std::filesystem::path(QUORVANE_GOLDEN_FOLDER) / name;
    if (std::getenv("QUORVANE_REWRITE_GOLDEN") != nullptr) {
        std::ofstream(file, std::ios::binary) << written;
    }
    EXPECT_EQ(contentOf(file), written) << name;
}

}  // namespace ScanKit
