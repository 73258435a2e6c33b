#include "QuorvaneCLI/Completions.h"
#include "QuorvaneCLI/ManualPage.h"

#include <cstdio>
#include <string>
#include <string_view>

/// Prints what is installed beside the command and made of its options: the manual page or the completion of a shell.
/// The build runs it; it is not installed.
int main(int count, char** arguments) {
    const std::string_view kind = count == 2 ? arguments[1] : "";
    const std::string page = kind == "man"    ? manualPage()
                             : kind == "bash" ? bashCompletion()
                             : kind == "zsh"  ? zshCompletion()
                             : kind == "fish" ? fishCompletion()
                                              : "";
    return !page.empty() && std::fputs(page.c_str(), stdout) >= 0 ? 0 : 2;
}
