#include "ScanKit/Identification/SPDX.h"

#include "ScanKit/Support/Text.h"
#include "Tests/Builders/Printers.h"

namespace ScanKit {
namespace {

using Id = std::optional<std::string_view>;

TEST(KnownLicenses, AreFoundByAnIdOfTheirOwn) {
    for (const KnownLicense& row : knownLicenses()) {
        EXPECT_EQ(SPDX::lookup(Text::uppercased(row.id)), &row) << row.id;
        EXPECT_TRUE(!row.text || SPDX::builtInText(*row.text))
            << row.id << " has no text under " << *row.text;
    }
    EXPECT_EQ(SPDX::builtInText("LGPL-2.0"), std::nullopt);
}

/// An alias that is an identifier itself is found by the identifier; both must mean the same.
TEST(Aliases, AllLeadToTheirLicense) {
    for (const auto& [alias, id] : SPDX::aliases()) {
        EXPECT_TRUE(SPDX::lookup(id)) << alias;
        EXPECT_EQ(SPDX::normalize(alias), id) << alias;
    }
}

TEST(SPDX, FindsWhatIsKnownAndGuessesNothing) {
    struct Case {
        Id (*find)(std::string_view);
        const char* text;
        Id id;
    };
    using SPDX::canonicalID, SPDX::normalize;
    constexpr auto classifier = SPDX::licenseFromClassifier;
    const Case cases[]{
        {canonicalID, "  mit ", "MIT"},
        {canonicalID, "\tapache-2.0", "Apache-2.0"},
        {canonicalID, "gpl-2.0+", "GPL-2.0-or-later"},
        {canonicalID, "LGPL-2.1+", "LGPL-2.1-or-later"},
        {canonicalID, "MIT+", "MIT"},
        {canonicalID, "mit\n", {}},
        {canonicalID, "Zlib-or-later", {}},
        {canonicalID, "MIT++", {}},
        {canonicalID, "+", {}},
        {canonicalID, "", {}},
        {canonicalID, "Foo", {}},
        {normalize, "Apache License, Version 2.0", "Apache-2.0"},
        {normalize, "The Apache Software License, Version 2.0", "Apache-2.0"},
        {normalize, "MPL v2.0", "MPL-2.0"},
        {normalize, "GNU General Public License v2 or later (GPLv2+)", "GPL-2.0-or-later"},
        {normalize, "The MIT License (MIT)", "MIT"},
        {classifier, "License :: OSI Approved :: Mozilla Public License 1.0 (MPL)", std::nullopt},
        {normalize, "Apache License 2 (Apache)", "Apache-2.0"},
        {normalize, "“MIT” License", "MIT"},
        {normalize, "Licence: MIT", "MIT"},
        {normalize, "All rights reserved", "UNLICENSED"},
        {normalize, "OSI Approved: ISC License", "ISC"},
        {normalize, "BSD License (see file) ", {}},
        {normalize, "GNU LGPLv3+", {}},
        {normalize, "CC0 1.0 Universal", {}},
        {normalize, "MIT (see LICENSE)", {}},
        {normalize, "Freely Distributable", {}},
        {normalize, "((MIT))", "MIT"},
        {normalize, "", {}},
        {classifier, "License :: OSI Approved :: MIT License", "MIT"},
        {classifier, "License :: OSI Approved :: GNU Lesser General Public License v3 or later (LGPLv3+)",
         "LGPL-3.0-or-later"},
        {classifier, "License :: Public Domain", "PublicDomain"},
        {classifier, "License :: Other/Proprietary License", "UNLICENSED"},
        {classifier, "License :: Other/Proprietary License :: OSI Approved", "UNLICENSED"},
        {classifier, "License :: Free :: Other/Proprietary License", {}},
        {classifier, "License :: OSI Approved", {}},
        {classifier, "License :: OSI Approved :: Foo", {}},
        {classifier, "License ::", {}},
        {classifier, "Topic :: MIT License", {}},
        {classifier, " License :: OSI Approved :: MIT License", {}},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(one.find(one.text), one.id) << one.text;
    }
    EXPECT_EQ(SPDX::expressionFromClassifiers({"License :: OSI Approved :: MIT License", "Framework :: X",
                                               "License :: OSI Approved :: Apache Software License",
                                               "License :: OSI Approved :: MIT License"}),
              "MIT OR Apache-2.0");
    EXPECT_EQ(SPDX::expressionFromClassifiers({"License :: OSI Approved"}), std::nullopt);
}

TEST(SPDX, NamesTheFamily) {
    constexpr std::pair<const char*, const char*> cases[]{{"GPL-2.0-or-later", "GPL-2.0"},
                                                          {"gpl-2.0+", "GPL-2.0"},
                                                          {"MPL-2.0-no-copyleft-exception", "MPL-2.0"},
                                                          {"MIT", "MIT"},
                                                          {"Foo-1.0-only", "Foo-1.0"}};
    for (const auto& [identifier, family] : cases) {
        EXPECT_EQ(SPDX::baseID(identifier), family);
    }
}

}  // namespace
}  // namespace ScanKit
