#include "QuorvaneCLI/Completions.h"
#include "QuorvaneCLI/HelpText.h"
#include "QuorvaneCLI/ManualPage.h"
#include "QuorvaneCLI/OptionTable.h"
#include "ScanKit/Support/Text.h"
#include "Tests/Builders/TemporaryFolder.h"

#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;

TEST(Pages, NameEachOptionAndItsChoices) {
    const std::string manual = ScanKit::Text::replacingAll(manualPage(), "\\-", "-");
    const std::pair<const char*, std::string> pages[]{
        {"man", manual}, {"bash", bashCompletion()}, {"zsh", zshCompletion()}, {"fish", fishCompletion()}};
    for (const auto& [kind, page] : pages) {
        const std::string before = std::string_view(kind) == "fish" ? " -l " : "--";
        for (const OptionRow& row : optionRows()) {
            EXPECT_THAT(page, HasSubstr(before + std::string(row.name))) << kind;
            for (const std::string& choice : choicesFor(row.value)) {
                EXPECT_THAT(page, HasSubstr(choice)) << kind << " " << row.name;
            }
        }
    }
}

/// What bash offers when the tab key is pressed behind the last of these words.
std::string offered(const std::string& words) {
    const TemporaryFolder folder{
        {"quorvane.bash", bashCompletion()},
        {"press-tab", ". ./quorvane.bash\nCOMP_WORDS=(" + words +
                          ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n"
                          "_quorvane\nIFS=' '\nprintf %s \"${COMPREPLY[*]}\" >offered\n"}};
    folder.makeFolder("my project");
    EXPECT_EQ(std::system(("cd '" + folder.path().string() + "' && bash press-tab").c_str()), 0);
    return contentOf(folder / "offered");
}

TEST(Pages, CompleteACommandLineInBash) {
    const std::pair<const char*, const char*> cases[]{
        {"quorvane --fail", "--fail-on"},
        {"quorvane --prepared", "--prepared-for --prepared-by"},
        {"quorvane --color ''", "auto always never"},
        {"quorvane --color = n", "never"},
        {"quorvane --color =", "auto always never"},
        {"quorvane --fail-on review,missing,not", "review,missing,notOnDisk"},
        {"quorvane --why le", ""},
        {"quorvane -o my", "my project"},
        {"quorvane --quiet m", "my project"},
    };
    for (const auto& [words, completions] : cases) {
        EXPECT_EQ(offered(words), completions) << words;
    }
}

TEST(Pages, AreReadByTheirPrograms) {
    const TemporaryFolder folder{{"man", manualPage()}, {"zsh", zshCompletion()}, {"fish", fishCompletion()}};
    const std::pair<const char*, const char*> cases[]{
        {"groff", "groff -man -Tutf8 -ww -z man"}, {"zsh", "zsh -n zsh"}, {"fish", "fish -n fish"}};
    for (const auto& [program, check] : cases) {
        // One that is not installed has nothing to say.
        const std::string command = "cd '" + folder.path().string() + "' && { ! command -v " + program +
                                    " >/dev/null || " + check + " 2>said; }";
        EXPECT_EQ(std::system(command.c_str()), 0) << program;
        EXPECT_EQ(contentOf(folder / "said"), "") << program;
    }
}

}  // namespace
