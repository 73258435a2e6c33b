#include "ScanKit/Identification/SPDX.h"

#include "ScanKit/Support/Text.h"
#include "Tests/Builders/Printers.h"

#include <unordered_set>

namespace ScanKit {
namespace {

using Id = std::optional<std::string_view>;

TEST(KnownLicenses, AreFoundByAnIdOfTheirOwn) {
    std::unordered_set<KnownLicense> distinct;
    for (const KnownLicense& row : knownLicenses()) {
        EXPECT_EQ(SPDX::lookup(Text::uppercased(row.id)), &row) << row.id;
        EXPECT_TRUE(!row.text || SPDX::builtInText(*row.text))
            << row.id << " has no text under " << *row.text;
        distinct.insert(row);
    }
    EXPECT_EQ(distinct.size(), knownLicenses().size());
    EXPECT_EQ(SPDX::builtInText("LGPL-2.0"), std::nullopt);
}

/// An alias that is an identifier itself is found by the identifier; both must mean the same.
TEST(Aliases, AllLeadToTheirLicense) {
    for (const auto& [alias, id] : SPDX::aliases()) {
        EXPECT_TRUE(SPDX::lookup(id)) << alias;
        EXPECT_EQ(SPDX::normalize(alias), id) << alias;
    }
}

TEST(SPDX, LooksIdentifiersUp) {
    const std::pair<const char*, Id> cases[]{
        {"  mit ", "MIT"},
        {"\tapache-2.0", "Apache-2.0"},
        {"gpl-2.0+", "GPL-2.0-or-later"},
        {"LGPL-2.1+", "LGPL-2.1-or-later"},
        {"MIT+", "MIT"},
        {"mit\n", {}},
        {"Zlib-or-later", {}},
        {"MIT++", {}},
        {"+", {}},
        {"", {}},
        {"Foo", {}},
    };
    for (const auto& [identifier, id] : cases) {
        EXPECT_EQ(SPDX::canonicalID(identifier), id) << identifier;
    }
}

TEST(SPDX, NormalizesFreeTextAndGuessesNothing) {
    const std::pair<const char*, Id> cases[]{
        {"Apache License, Version 2.0", "Apache-2.0"},
        {"The Apache Software License, Version 2.0", "Apache-2.0"},
        {"BSD 3-Clause License", "BSD-3-Clause"},
        {"Simplified BSD", "BSD-2-Clause"},
        {"LGPLv3+", "LGPL-3.0-or-later"},
        {"MPL v2.0", "MPL-2.0"},
        {"GNU General Public License v2 or later (GPLv2+)", "GPL-2.0-or-later"},
        {"The MIT License (MIT)", "MIT"},
        {"“MIT” License", "MIT"},
        {"Licence: MIT", "MIT"},
        {"Proprietary", "UNLICENSED"},
        {"All rights reserved", "UNLICENSED"},
        {"Public Domain", "PublicDomain"},
        {"OSI Approved: ISC License", "ISC"},
        {"BSD License (see file) ", {}},
        {"GNU LGPLv3+", {}},
        {"CC0 1.0 Universal", {}},
        {"MIT (see LICENSE)", {}},
        {"Freely Distributable", {}},
        {"((MIT))", "MIT"},
        {"", {}},
    };
    for (const auto& [text, id] : cases) {
        EXPECT_EQ(SPDX::normalize(text), id) << text;
    }
}

TEST(SPDX, NamesTheFamily) {
    const std::pair<const char*, const char*> cases[]{
        {"GPL-2.0-or-later", "GPL-2.0"},
        {"gpl-2.0+", "GPL-2.0"},
        {"MPL-2.0-no-copyleft-exception", "MPL-2.0"},
        {"MIT", "MIT"},
        {"Foo-1.0-only", "Foo-1.0"},
    };
    for (const auto& [identifier, family] : cases) {
        EXPECT_EQ(SPDX::baseID(identifier), family);
    }
}

TEST(SPDX, ReadsClassifiers) {
    const std::pair<const char*, Id> cases[]{
        {"License :: OSI Approved :: MIT License", "MIT"},
        {"License :: OSI Approved :: GNU Lesser General Public License v3 or later (LGPLv3+)",
         "LGPL-3.0-or-later"},
        {"License :: Public Domain", "PublicDomain"},
        {"License :: Other/Proprietary License", "UNLICENSED"},
        {"License :: Other/Proprietary License :: OSI Approved", "UNLICENSED"},
        {"License :: Free :: Other/Proprietary License", {}},
        {"License :: OSI Approved", {}},
        {"License :: OSI Approved :: Foo", {}},
        {"License ::", {}},
        {"Topic :: MIT License", {}},
        {" License :: OSI Approved :: MIT License", {}},
    };
    for (const auto& [classifier, id] : cases) {
        EXPECT_EQ(SPDX::licenseFromClassifier(classifier), id) << classifier;
    }
    EXPECT_EQ(SPDX::expressionFromClassifiers({"License :: OSI Approved :: MIT License", "Framework :: X",
                                               "License :: OSI Approved :: Apache Software License",
                                               "License :: OSI Approved :: MIT License"}),
              "MIT OR Apache-2.0");
    EXPECT_EQ(SPDX::expressionFromClassifiers({"License :: OSI Approved"}), std::nullopt);
}

}  // namespace
}  // namespace ScanKit
