#include "diagnostics/zip_archive.h"

#include <fstream>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "diagnostics/zip_records.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "tests/support/diagnostics/zip_reader.h"
#include "tests/support/diagnostics/zip_tool_command.h"
#include "tests/support/diagnostics/zip_tools.h"
#include "tests/support/foundation/temp_folder.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes bytesOf(const std::string& text) {
    return Bytes(text.begin(), text.end());
}

ZipArchive::Entry entry(const std::string& name, const Bytes& data) {
    return ZipArchive::Entry{name, data, false};
}

ZipArchive archiveOf(const std::vector<ZipArchive::Entry>& entries) {
    ZipArchive archive;
    for (const auto& e : entries) {
        archive.add(e);
    }
    return archive;
}

std::uint32_t crcOf(const Bytes& data) {
    // The standard CRC-32, bit by bit, as the ZIP format defines it.
    std::uint32_t crc = 0xFFFFFFFF;
    for (const std::uint8_t byte : data) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1) ^ (0xEDB88320 & (0u - (crc & 1)));
        }
    }
    return ~crc;
}

// Writes the archive to a file, lets the external readers test it where they can be reached and
// reads it back with the tests' own reader, which must find exactly the entries given.
ZipRead readBack(const Bytes& archive, const std::vector<ZipArchive::Entry>& entries,
                 bool withUnzip = true) {
    TempFolder folder;
    const std::string path = folder.file("archive.zip");
    {
        std::ofstream out(folder.native() / "archive.zip", std::ios::binary);
        out.write(reinterpret_cast<const char*>(archive.data()),
                  static_cast<std::streamsize>(archive.size()));
    }
    const std::vector<std::string> ran = testWithExternalReaders(path, !entries.empty(), withUnzip);
    if (posixToolsReachable()) {
        std::vector<std::string> expected = {"python3 zipfile"};
        if (withUnzip) {
            expected.push_back("unzip");
        }
        EXPECT_EQ(ran, expected);
    }
    const ZipRead read = readZip(archive);
    EXPECT_EQ(read.members.size(), entries.size());
    for (std::size_t i = 0; i < read.members.size() && i < entries.size(); ++i) {
        EXPECT_EQ(read.members[i].central.name, entries[i].name);
        EXPECT_EQ(read.members[i].content, entries[i].data);
    }
    return read;
}

ZipRead packAndReadBack(const std::vector<ZipArchive::Entry>& entries) {
    return readBack(archiveOf(entries).pack(), entries);
}

std::string packErrorWords() {
    try {
        archiveOf({entry("a\\b", {})}).pack();
    } catch (const ZipArchive::PackError& e) {
        return e.what();
    }
    return "nothing thrown";
}

// The fields a local header and its directory entry share, when they are not name, sizes or CRC.
void expectFixedEntryFields(const ZipEntryFields& fields, std::uint16_t method) {
    EXPECT_EQ(fields.versionNeeded, method == 8 ? 20 : 0);
    EXPECT_EQ(fields.flags, 0);
    EXPECT_EQ(fields.method, method);
    EXPECT_EQ(fields.time, 0);
    EXPECT_EQ(fields.date, 0);
    EXPECT_EQ(fields.extraLength, 0);
}

// Every field of both headers of one member that is not its name, sizes or offset.
void expectFixedFields(const ZipMemberRead& member, std::uint16_t method) {
    expectFixedEntryFields(member.local, method);
    expectFixedEntryFields(member.central, method);
    EXPECT_EQ(member.central.versionMadeBy, 0);
    EXPECT_EQ(member.central.commentLength, 0);
    EXPECT_EQ(member.central.diskStart, 0);
    EXPECT_EQ(member.central.internalAttributes, 0);
}

std::uint16_t u16At(const Bytes& bytes, std::size_t at) {
    return static_cast<std::uint16_t>(bytes.at(at) | (bytes.at(at + 1) << 8));
}

std::uint32_t u32At(const Bytes& bytes, std::size_t at) {
    return u16At(bytes, at) | (static_cast<std::uint32_t>(u16At(bytes, at + 2)) << 16);
}

} // namespace

TEST(ZipArchive, EmptyArchiveIsTheEndRecordAlone) {
    const Bytes archive = ZipArchive().pack();
    const Bytes expected = {0x50, 0x4B, 0x05, 0x06, 0, 0, 0, 0, 0, 0, 0,
                            0,    0,    0,    0,    0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(archive, expected);
    const ZipRead read = readBack(archive, {});
    EXPECT_EQ(read.end.entriesInAll, 0);
    EXPECT_EQ(read.end.directorySize, 0u);
    EXPECT_EQ(read.end.directoryOffset, 0u);
}

TEST(ZipArchive, EmptyFileIsStoredWithSizeZeroCrcZeroAndVersionZero) {
    const ZipRead read = packAndReadBack({entry("empty.log", {})});
    ASSERT_EQ(read.members.size(), 1u);
    const ZipMemberRead& member = read.members[0];
    expectFixedFields(member, 0);
    EXPECT_EQ(member.central.crc, 0u);
    EXPECT_EQ(member.central.compressedSize, 0u);
    EXPECT_EQ(member.central.uncompressedSize, 0u);
    EXPECT_EQ(member.local.versionNeeded, 0);
}

TEST(ZipArchive, ThreeByteFileIsStored) {
    const Bytes data = bytesOf("abc");
    const Bytes archive = archiveOf({entry("three", data)}).pack();
    const ZipRead read = readBack(archive, {entry("three", data)});
    ASSERT_EQ(read.members.size(), 1u);
    expectFixedFields(read.members[0], 0);
    EXPECT_EQ(read.members[0].central.compressedSize, 3u);
    EXPECT_EQ(read.members[0].central.crc, crcOf(data));
    // The data stands as it is, right behind the local header and the name.
    EXPECT_EQ(Bytes(archive.begin() + 30 + 5, archive.begin() + 30 + 5 + 3), data);
}

TEST(ZipArchive, FourByteFileIsDeflatedAndMayComeOutLarger) {
    const Bytes data = bytesOf("abcd");
    const ZipRead read = packAndReadBack({entry("four", data)});
    ASSERT_EQ(read.members.size(), 1u);
    expectFixedFields(read.members[0], 8);
    EXPECT_EQ(read.members[0].central.uncompressedSize, 4u);
    EXPECT_GT(read.members[0].central.compressedSize, 4u);
    EXPECT_EQ(read.members[0].central.crc, crcOf(data));
}

TEST(ZipArchive, NameWithBackslashFailsTheWholePack) {
    const ZipArchive archive =
        archiveOf({entry("ping.log", bytesOf("ok")), entry("logs\\ping.log", bytesOf("x"))});
    EXPECT_THROW(archive.pack(), ZipArchive::PackError);
}

TEST(ZipArchive, NameStartingWithSlashFails) {
    EXPECT_THROW(archiveOf({entry("/ping.log", {})}).pack(), ZipArchive::PackError);
}

TEST(ZipArchive, NameWithColonFails) {
    EXPECT_THROW(archiveOf({entry("C:ping.log", {})}).pack(), ZipArchive::PackError);
}

TEST(ZipArchive, NameOf65535BytesIsTakenAndOneMoreFails) {
    const std::string longest(65535, 'n');
    const std::vector<ZipArchive::Entry> entries = {entry(longest, bytesOf("data"))};
    const ZipRead read = readBack(archiveOf(entries).pack(), entries, false);
    ASSERT_EQ(read.members.size(), 1u);
    EXPECT_EQ(read.members[0].central.nameLength, 65535);
    EXPECT_THROW(archiveOf({entry(longest + "n", {})}).pack(), ZipArchive::PackError);
}

TEST(ZipArchive, FolderEntryHasTheFolderAttributeAndNoData) {
    const ZipRead read = packAndReadBack({entry("logs/", {}), entry("logs/a.log", bytesOf("a"))});
    ASSERT_EQ(read.members.size(), 2u);
    expectFixedFields(read.members[0], 0);
    EXPECT_EQ(read.members[0].central.externalAttributes, 0x10u);
    EXPECT_EQ(read.members[1].central.externalAttributes, 0u);
}

TEST(ZipArchive, FolderEntryWithDataFails) {
    EXPECT_THROW(archiveOf({entry("logs/", bytesOf("x"))}).pack(), ZipArchive::PackError);
}

TEST(ZipArchive, ConfigAddedLastHasHighestOffsetAndLastDirectoryEntry) {
    const std::vector<ZipArchive::Entry> entries = {
        entry("error.log", bytesOf(std::string(5000, 'e'))), entry("ping.log", bytesOf("pong")),
        entry("nginx.conf", bytesOf("worker_processes 1;\n"))};
    const ZipRead read = packAndReadBack(entries);
    ASSERT_EQ(read.members.size(), 3u);
    EXPECT_EQ(read.members.back().central.name, "nginx.conf");
    EXPECT_GT(read.members[2].central.localHeaderOffset, read.members[1].central.localHeaderOffset);
    EXPECT_GT(read.members[1].central.localHeaderOffset, read.members[0].central.localHeaderOffset);
}

TEST(ZipArchive, TwoEntriesWithOneNameYieldTwoMembers) {
    const std::vector<ZipArchive::Entry> entries = {entry("nginx.conf", bytesOf("first")),
                                                    entry("nginx.conf", bytesOf("second"))};
    const ZipRead read = packAndReadBack(entries);
    ASSERT_EQ(read.members.size(), 2u);
    EXPECT_EQ(read.end.entriesInAll, 2);
}

TEST(ZipArchive, CyrillicNameIsStoredAsItsUtf8BytesWithoutTheUtf8Flag) {
    const std::string name = "журнал.log";
    const ZipRead read = packAndReadBack({entry(name, bytesOf("строка"))});
    ASSERT_EQ(read.members.size(), 1u);
    EXPECT_EQ(read.members[0].local.name, name);
    EXPECT_EQ(read.members[0].local.nameLength, name.size());
    EXPECT_EQ(read.members[0].local.flags & 0x800, 0);
    EXPECT_EQ(read.members[0].central.flags & 0x800, 0);
}

TEST(ZipArchive, HeadersHoldEveryFieldAsLaidOut) {
    const Bytes first = bytesOf(std::string(300, 'x') + "tail");
    const Bytes second = bytesOf("ab");
    const Bytes archive = archiveOf({entry("a.log", first), entry("b", second)}).pack();
    const ZipRead read = readBack(archive, {entry("a.log", first), entry("b", second)});
    ASSERT_EQ(read.members.size(), 2u);
    const std::uint32_t firstStored = read.members[0].central.compressedSize;

    // First local header, field by field from the raw bytes.
    EXPECT_EQ(u32At(archive, 0), 0x04034B50u);
    EXPECT_EQ(u16At(archive, 4), 20);
    EXPECT_EQ(u16At(archive, 6), 0);
    EXPECT_EQ(u16At(archive, 8), 8);
    EXPECT_EQ(u16At(archive, 10), 0);
    EXPECT_EQ(u16At(archive, 12), 0);
    EXPECT_EQ(u32At(archive, 14), crcOf(first));
    EXPECT_EQ(u32At(archive, 18), firstStored);
    EXPECT_EQ(u32At(archive, 22), first.size());
    EXPECT_EQ(u16At(archive, 26), 5);
    EXPECT_EQ(u16At(archive, 28), 0);
    EXPECT_EQ(std::string(archive.begin() + 30, archive.begin() + 35), "a.log");

    // The second member follows without padding and without a data descriptor.
    const std::size_t second_at = 30 + 5 + firstStored;
    EXPECT_EQ(read.members[1].central.localHeaderOffset, second_at);
    EXPECT_EQ(u32At(archive, second_at), 0x04034B50u);
    EXPECT_EQ(u16At(archive, second_at + 4), 0);
    EXPECT_EQ(u16At(archive, second_at + 8), 0);
    EXPECT_EQ(u32At(archive, second_at + 14), crcOf(second));
    EXPECT_EQ(u32At(archive, second_at + 18), 2u);
    EXPECT_EQ(u32At(archive, second_at + 22), 2u);
    EXPECT_EQ(u16At(archive, second_at + 26), 1);
    const std::size_t directory_at = second_at + 30 + 1 + 2;

    // First central header.
    EXPECT_EQ(u32At(archive, directory_at), 0x02014B50u);
    EXPECT_EQ(u16At(archive, directory_at + 4), 0);
    EXPECT_EQ(u16At(archive, directory_at + 6), 20);
    EXPECT_EQ(u16At(archive, directory_at + 8), 0);
    EXPECT_EQ(u16At(archive, directory_at + 10), 8);
    EXPECT_EQ(u16At(archive, directory_at + 12), 0);
    EXPECT_EQ(u16At(archive, directory_at + 14), 0);
    EXPECT_EQ(u32At(archive, directory_at + 16), crcOf(first));
    EXPECT_EQ(u32At(archive, directory_at + 20), firstStored);
    EXPECT_EQ(u32At(archive, directory_at + 24), first.size());
    EXPECT_EQ(u16At(archive, directory_at + 28), 5);
    EXPECT_EQ(u16At(archive, directory_at + 30), 0);
    EXPECT_EQ(u16At(archive, directory_at + 32), 0);
    EXPECT_EQ(u16At(archive, directory_at + 34), 0);
    EXPECT_EQ(u16At(archive, directory_at + 36), 0);
    EXPECT_EQ(u32At(archive, directory_at + 38), 0u);
    EXPECT_EQ(u32At(archive, directory_at + 42), 0u);
    EXPECT_EQ(std::string(archive.begin() + directory_at + 46, archive.begin() + directory_at + 51),
              "a.log");

    // Second central header, then the end record closes the file.
    const std::size_t second_central_at = directory_at + 46 + 5;
    EXPECT_EQ(u32At(archive, second_central_at), 0x02014B50u);
    EXPECT_EQ(u16At(archive, second_central_at + 6), 0);
    EXPECT_EQ(u16At(archive, second_central_at + 10), 0);
    EXPECT_EQ(u32At(archive, second_central_at + 42), second_at);
    const std::size_t end_at = second_central_at + 46 + 1;
    ASSERT_EQ(archive.size(), end_at + 22);
    EXPECT_EQ(u32At(archive, end_at), 0x06054B50u);
    EXPECT_EQ(u16At(archive, end_at + 4), 0);
    EXPECT_EQ(u16At(archive, end_at + 6), 0);
    EXPECT_EQ(u16At(archive, end_at + 8), 2);
    EXPECT_EQ(u16At(archive, end_at + 10), 2);
    EXPECT_EQ(u32At(archive, end_at + 12), end_at - directory_at);
    EXPECT_EQ(u32At(archive, end_at + 16), directory_at);
    EXPECT_EQ(u16At(archive, end_at + 20), 0);
}

TEST(ZipArchive, DeflatedDataIsARawStreamWithoutZlibHeader) {
    // A zlib header would begin with 0x78; a raw stream of a final fixed-Huffman block doesn't.
    const Bytes data = bytesOf(std::string(1000, 'z'));
    const Bytes archive = archiveOf({entry("z", data)}).pack();
    const ZipRead read = readBack(archive, {entry("z", data)});
    ASSERT_EQ(read.members.size(), 1u);
    EXPECT_LT(read.members[0].central.compressedSize, 100u);
    EXPECT_NE(archive.at(30 + 1), 0x78);
}

TEST(ZipArchive, IncompressibleDataIsStillDeflated) {
    std::mt19937 random(7);
    Bytes data(20000);
    for (auto& byte : data) {
        byte = static_cast<std::uint8_t>(random());
    }
    const ZipRead read = packAndReadBack({entry("random.bin", data)});
    ASSERT_EQ(read.members.size(), 1u);
    EXPECT_EQ(read.members[0].central.method, 8);
    EXPECT_GT(read.members[0].central.compressedSize, data.size());
}

TEST(ZipArchive, PackLeavesTheEntriesAndGivesTheSameBytesAgain) {
    const ZipArchive archive = archiveOf({entry("a", bytesOf("alpha")), entry("b", {})});
    const Bytes first = archive.pack();
    EXPECT_EQ(archive.pack(), first);
    readBack(first, {entry("a", bytesOf("alpha")), entry("b", {})});
}

TEST(ZipArchive, AddChecksNothingAndTheFailureComesAtPack) {
    ZipArchive archive;
    EXPECT_NO_THROW(archive.add(entry("bad\\name", bytesOf("x"))));
    EXPECT_THROW(archive.pack(), ZipArchive::PackError);
}

TEST(ZipArchive, NameEndsAtItsFirstZeroByte) {
    const std::string name("cut\0tail", 8);
    const Bytes archive = archiveOf({entry(name, bytesOf("x"))}).pack();
    const ZipRead read = readBack(archive, {entry("cut", bytesOf("x"))});
    ASSERT_EQ(read.members.size(), 1u);
    EXPECT_EQ(read.members[0].central.nameLength, 3);
}

TEST(ZipArchive, MembersKeepTheOrderOfAdding) {
    const std::vector<ZipArchive::Entry> entries = {
        entry("z.log", bytesOf("zz")), entry("a.log", bytesOf("aaaa")), entry("m.log", {})};
    const ZipRead read = packAndReadBack(entries);
    ASSERT_EQ(read.members.size(), 3u);
    EXPECT_EQ(read.members[0].central.name, "z.log");
    EXPECT_EQ(read.members[2].central.name, "m.log");
}

TEST(ZipArchive, ArchiveTakes65535MembersAndRefusesOneMore) {
    ZipArchive archive;
    for (unsigned i = 0; i < 65535; ++i) {
        archive.add(entry(std::to_string(i), {}));
    }
    const Bytes packed = archive.pack();
    EXPECT_EQ(u16At(packed, packed.size() - 22 + 8), 65535);
    EXPECT_EQ(u16At(packed, packed.size() - 22 + 10), 65535);
    EXPECT_EQ(readZip(packed).members.size(), 65535u);
    archive.add(entry("one more", {}));
    EXPECT_THROW(archive.pack(), ZipArchive::PackError);
}

TEST(ZipArchive, ArchivePastFourGibibytesIsRefused) {
    // A member fits while its headers, the directory and the end record stay within 0xFFFFFFFF.
    const std::uint64_t limit = 0xFFFFFFFF;
    const std::uint64_t headers = 30 + 46 + 22 + 2 * 8;
    EXPECT_TRUE(ziprecords::memberFits(0, 0, 8, limit - headers));
    EXPECT_FALSE(ziprecords::memberFits(0, 0, 8, limit - headers + 1));
    EXPECT_TRUE(ziprecords::memberFits(limit - headers - 100, 100, 8, 0));
    EXPECT_FALSE(ziprecords::memberFits(limit - headers - 100, 101, 8, 0));
    EXPECT_FALSE(ziprecords::memberFits(0, 0, 0, limit + 1));
}

TEST(ZipArchive, PackErrorWordsAreUkrainianWhateverTheProgramLanguage) {
    const std::string ukrainian = utf8ToCp1251("Помилка пакування ZIP");
    EXPECT_EQ(packErrorWords(), ukrainian);
    panelMessages.setLanguage(1);
    commonMessages.setLanguage(1);
    EXPECT_EQ(packErrorWords(), ukrainian);
    panelMessages.setLanguage(2);
    commonMessages.setLanguage(2);
}

TEST(ZipArchive, PackErrorLooksUpItsWordsWhenRead) {
    ZipArchive::PackError error;
    zipMessages.setLanguage(1);
    EXPECT_STREQ(error.what(), "Archive packing error");
    zipMessages.setLanguage(2);
    EXPECT_EQ(std::string(error.what()), utf8ToCp1251("Помилка пакування ZIP"));
}

TEST(ZipArchive, ReadersOfTheTestsRefuseADamagedArchive) {
    // The checks above are worth something only if a broken CRC is noticed.
    Bytes archive = archiveOf({entry("a.log", bytesOf("some text"))}).pack();
    archive[14] ^= 0xFF;
    archive[archive.size() - 22 - 46 - 5 + 16] ^= 0xFF;
    EXPECT_THROW(readZip(archive), std::runtime_error);
    if (!posixToolsReachable()) {
        GTEST_SKIP() << "no external ZIP reader on this system";
    }
    TempFolder folder;
    {
        std::ofstream out(folder.native() / "broken.zip", std::ios::binary);
        out.write(reinterpret_cast<const char*>(archive.data()),
                  static_cast<std::streamsize>(archive.size()));
    }
    testing::TestPartResultArray failures;
    {
        testing::ScopedFakeTestPartResultReporter reporter(
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &failures);
        testWithExternalReaders(folder.file("broken.zip"), true);
    }
    std::string said;
    for (int i = 0; i < failures.size(); ++i) {
        said += failures.GetTestPartResult(i).message();
    }
    EXPECT_NE(said.find("The following enclosed file is corrupted: 'a.log'"), std::string::npos);
    EXPECT_NE(said.find("bad CRC"), std::string::npos);
}
