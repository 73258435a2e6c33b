#include "ScanKit/Support/ZipArchive.h"

#include "Tests/Builders/TemporaryFolder.h"
#include "Tests/Builders/ZipFile.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace ScanKit {
namespace {

using testing::ElementsAre;

constexpr std::string_view endRecord = "PK\x05\x06";
constexpr std::string_view listRecord = "PK\x01\x02";

std::vector<std::string> namesIn(const std::filesystem::path& path) {
    const auto archive = ZipArchive::open(path);
    std::vector<std::string> names;
    for (const ZipArchive::Entry& entry : archive ? archive->entries() : std::vector<ZipArchive::Entry>{}) {
        names.push_back(entry.name);
    }
    return archive ? names : std::vector<std::string>{"no archive"};
}

/// Entry "a" of an archive, when it can be read whole.
std::optional<std::string> readA(const std::filesystem::path& path, std::size_t largest = 1 << 24) {
    const auto archive = ZipArchive::open(path);
    const ZipArchive::Entry* const entry = archive ? archive->entryNamed("a") : nullptr;
    return entry != nullptr ? archive->read(*entry, largest) : std::nullopt;
}

TEST(ZipArchive, ReadsStoredAndCompressedFiles) {
    const TemporaryFolder folder;
    const std::string words(5000, 'w');
    writeZip(folder / "x.zip",
             {{"b/c", words, 0100644, true}, {"a", std::string("one\0two", 7)}, {"e", "", 0}});
    const auto archive = ZipArchive::open(folder / "x.zip");
    ASSERT_TRUE(archive);
    EXPECT_THAT(namesIn(folder / "x.zip"), ElementsAre("a", "b/c", "e"));
    const ZipArchive::Entry& words2 = *archive->entryNamed("b/c");
    EXPECT_EQ(archive->read(words2, 5000), words);
    EXPECT_EQ(archive->read(words2, 4999), std::nullopt);
    EXPECT_EQ(archive->readStart(words2, 3), "www");
    EXPECT_EQ(archive->readStart(words2, 9000), words);
    EXPECT_EQ(archive->read(*archive->entryNamed("e"), 0), "");
    EXPECT_EQ(archive->entryNamed("b"), nullptr);
    EXPECT_EQ(readA(folder / "x.zip"), std::string("one\0two", 7));
}

TEST(ZipArchive, PassesOverWhatIsNoPlainFile) {
    const TemporaryFolder folder;
    writeZip(folder / "x.zip", {{"/etc/passwd", "x"},
                                {"../up", "x"},
                                {"a/../../up", "x"},
                                {"a/..", "x"},
                                {"a\\b", "x"},
                                {"folder/", ""},
                                {"link", "/etc/passwd", 0120777},
                                {"device", "", 020666},
                                {"..fine", "x"}});
    EXPECT_THAT(namesIn(folder / "x.zip"), ElementsAre("..fine"));

    // Two entries of one name: made under two, since libraries refuse to.
    writeZip(folder / "twice.zip", {{"a", "first"}, {"z", "second"}});
    std::string bytes = contentOf(folder / "twice.zip");
    for (std::size_t at = bytes.find('z'); at != std::string::npos; at = bytes.find('z', at)) {
        bytes[at] = 'a';
    }
    EXPECT_EQ(readA(folder.write("twice.zip", bytes)), "second");
    EXPECT_THAT(namesIn(folder / "twice.zip"), ElementsAre("a"));
}

TEST(ZipArchive, RefusesBombsAndLies) {
    const TemporaryFolder folder;
    const std::size_t million = 1 << 20;
    writeZip(folder / "bomb.zip", {{"a", std::string(4 * million, '\0'), 0100644, true}});
    EXPECT_EQ(readA(folder / "bomb.zip"), std::nullopt);
    writeZip(folder / "small.zip", {{"a", std::string(million, '\0'), 0100644, true}});
    EXPECT_EQ(readA(folder / "small.zip")->size(), million) << "what is small in the end may be repetitive";

    // A size in the list of entries that is smaller than what comes out.
    constexpr std::size_t sizeInListRecord = 24;
    std::string lying = contentOf(folder / "bomb.zip");
    const std::size_t record = lying.find(listRecord);
    lying.replace(record + sizeInListRecord, 4, std::string("\x10\0\0\0", 4));
    EXPECT_EQ(readA(folder.write("lying.zip", lying)), std::nullopt);

    // Bytes that do not fit the checksum.
    writeZip(folder / "plain.zip", {{"a", "some text"}});
    const std::string plain = contentOf(folder / "plain.zip");
    std::string changed = plain;
    changed.replace(changed.find("some"), 4, "SOME");
    EXPECT_EQ(readA(folder.write("changed.zip", changed)), std::nullopt);

    // A list that would fill the memory when it is read.
    constexpr std::size_t listBytesInEndRecord = 12;
    std::string huge = plain;
    huge.replace(huge.find(endRecord) + listBytesInEndRecord, 4, "\xFF\xFF\xFF\x7F");
    EXPECT_FALSE(ZipArchive::open(folder.write("huge.zip", huge)));

    std::vector<ZipMember> longNames;
    for (int i = 0; i < 140; ++i) {
        longNames.push_back({std::to_string(i) + std::string(60'000, 'x'), ""});
    }
    writeZip(folder / "long.zip", longNames);
    EXPECT_FALSE(ZipArchive::open(folder / "long.zip")) << "8.4 million bytes of names";

    // The last bytes, the length of a comment, say nothing that is needed.
    constexpr std::size_t needless = 4;
    for (std::size_t length = 0; length + needless < plain.size(); ++length) {
        EXPECT_EQ(readA(folder.write("cut.zip", plain.substr(0, length))), std::nullopt) << length;
    }
}

TEST(ZipArchive, OpensRegularFilesAlone) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder / "fifo.zip").c_str(), 0600), 0);
    for (const std::string_view name : {"fifo.zip", "missing.zip", "."}) {
        EXPECT_FALSE(ZipArchive::open(folder / name)) << name;
    }
    EXPECT_FALSE(ZipArchive::open(folder.write("text.zip", std::string(100'000, 'x'))));
}

}  // namespace
}  // namespace ScanKit
