#include "Tests/Builders/ZipFile.h"

#include <gtest/gtest.h>
#include <zip.h>

void writeZip(const std::filesystem::path& path, const std::vector<ZipMember>& members) {
    std::filesystem::create_directories(path.parent_path());
    zip_t* const archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    ASSERT_NE(archive, nullptr) << path;
    for (const ZipMember& member : members) {
        zip_source_t* const source = zip_source_buffer(archive, member.bytes.data(), member.bytes.size(), 0);
        const zip_int64_t place = zip_file_add(archive, member.name.c_str(), source, ZIP_FL_ENC_UTF_8);
        ASSERT_GE(place, 0) << member.name;
        const auto at = static_cast<zip_uint64_t>(place);
        zip_set_file_compression(archive, at, member.isCompressed ? ZIP_CM_DEFLATE : ZIP_CM_STORE, 9);
        zip_file_set_external_attributes(archive, at, 0, ZIP_OPSYS_UNIX, member.mode << 16);
    }
    ASSERT_EQ(zip_close(archive), 0) << path;
}
