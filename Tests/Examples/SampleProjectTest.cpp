#include "ScanKit/Scan/Scanner.h"
#include "ScanKit/Support/Text.h"

#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ScanKit {
namespace {

ScanResult scanned() {
    return Scanner::scan(QUORVANE_SAMPLE_PROJECT,
                         {.ecosystems = {allEcosystems.begin(), allEcosystems.end()}});
}

std::string row(const Dependency& dependency) {
    std::string text = dependency.id() + (dependency.isDev ? " dev" : "") + " | " +
                       dependency.license.value_or("-") + " | " + std::string(rawValue(dependency.basis)) +
                       " |";
    for (const Flag flag : dependency.flags) {
        text += " " + std::string(rawValue(flag));
    }
    return text;
}

TEST(SampleProject, ReadsAsItsReadmeSays) {
    std::vector<std::string> rows;
    for (const Dependency& dependency : scanned().dependencies) {
        rows.push_back(row(dependency));
    }
    EXPECT_THAT(
        rows,
        testing::ElementsAre(
            "swiftpm:atlas-maps@0.9.0 | - | none | missing notOnDisk",
            "swiftpm:ferry@main @ 4f1c2d3 | MPL-2.0 | notice | weakCopyleft",
            "swiftpm:harbor-net@3.0.1 | Apache-2.0 | text |", "swiftpm:lantern@1.2.0 | MIT | text |",
            "swiftpm:quarry@0.8.0 | BSD-3-Clause | text |",
            "npm:@sample/compass@4.2.0 | LGPL-3.0-or-later | metadata | weakCopyleft noLicenseFile",
            "npm:anchor@3.3.0 | GPL-3.0-only | metadataAndText | strongCopyleft",
            "npm:bundle-of-nets@3.0.0 | MIT | metadataAndText |",
            "npm:captains-log@2.0.0 | - | none | proprietary",
            "npm:deep-current@0.7.1 | AGPL-3.0-or-later | metadataAndText | networkCopyleft",
            "npm:dry-dock@7.2.0 dev | BSD-2-Clause | metadataAndText |",
            "npm:empty-hold@0.0.4 | - | none | missing", "npm:far-island@1.4.0 | MIT | metadata | notOnDisk",
            "npm:harbor-master@6.0.0 | UNLICENSED | metadata | proprietary",
            "npm:mixed-cargo@1.1.0 | ISC | metadata | mismatch",
            "npm:old-rigging@5.0.0 | GPL-2.0-only WITH Classpath-exception-2.0 | metadata | weakCopyleft "
            "noLicenseFile",
            "npm:paper-boat@2.1.0 | MIT | metadataAndText |",
            "npm:public-pier@1.0.0 | Unlicense | metadataAndText |",
            "npm:salt-spray@0.2.0 | - | none | unknown",
            "npm:tide-table@1.0.3 | MIT OR GPL-3.0-only | metadataAndText |",
            "python:gull@1.4.0 | BSD-2-Clause | metadataAndText |",
            "python:heron@0.3.0 dev | MIT | metadataAndText |",
            "python:pelican-pouch@1.1.0 | PublicDomain | metadata |",
            "python:puffin@any | - | none | missing notOnDisk",
            "python:sandpiper-nest@2.0.1 | Apache-2.0 | classifier | noLicenseFile"));
}

TEST(SampleProject, ShowsEveryCategoryBasisFlagAndKindOfNote) {
    std::set<LicenseCategory> categories;
    std::set<LicenseBasis> bases;
    std::set<Flag> flags;
    std::string notes;
    std::size_t withNotice = 0;
    for (const Dependency& dependency : scanned().dependencies) {
        categories.insert(dependency.category);
        bases.insert(dependency.basis);
        flags.insert(dependency.flags.begin(), dependency.flags.end());
        notes += Text::joined(dependency.notes, "\n") + "\n";
        withNotice += dependency.noticeText ? 1 : 0;
    }
    EXPECT_EQ(categories.size(), allLicenseCategories.size());
    EXPECT_EQ(bases.size(), allLicenseBases.size());
    EXPECT_EQ(flags.size(), allFlags.size());
    EXPECT_EQ(withNotice, 1U);
    for (const char* part :
         {"also contains Zlib text", "close to the standard BSD-3-Clause text", "choice of licenses",
          "Copyleft with an exception", "custom license", "short license notice"}) {
        EXPECT_THAT(notes, testing::HasSubstr(part));
    }
}

}  // namespace
}  // namespace ScanKit
