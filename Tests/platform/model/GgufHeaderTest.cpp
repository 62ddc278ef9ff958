#include "platform/model/GgufHeader.h"

#include "platform/model/GgufFile.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace orvu {
namespace {

std::optional<GgufHeader> header(const std::string& bytes) {
    return GgufHeader::read(fileBytes(bytes));
}

TEST(GgufHeaderTest, AChatModelTellsWhatItIs) {
    const auto read = header(GgufFile::chatModel().bytes());

    ASSERT_TRUE(read);
    EXPECT_EQ(read->architecture, "llama");
    EXPECT_EQ(read->name, "Otter 1B");
    EXPECT_EQ(read->contextTokens, 4096U);
    EXPECT_EQ(read->contextBytes, 2U * 2 * (16 + 16) * 2);  // layers, heads, key and value, bytes
    EXPECT_TRUE(read->isOfChatModel());
}

TEST(GgufHeaderTest, EachLayerMayHaveHeadsOfItsOwn) {
    GgufFile file;
    file.add("general.architecture", "gemma").add("gemma.block_count", 3U);
    file.add("gemma.attention.head_count", 8U).add("gemma.embedding_length", 64U);
    file.add("gemma.attention.head_count_kv", std::vector<std::uint32_t>{1, 2, 4});
    file.add("gemma.attention.key_length", 32U);

    const auto read = header(file.bytes());

    ASSERT_TRUE(read);
    EXPECT_EQ(read->contextBytes, (1U + 2 + 4) * (32 + 8) * 2);
}

TEST(GgufHeaderTest, WithoutATemplateOrAsAnAdapterItIsNoChatModel) {
    GgufFile plain;
    plain.add("general.architecture", "bert");
    GgufFile adapter;
    adapter.add("general.architecture", "llama").add("general.type", "adapter");
    adapter.add("tokenizer.chat_template", "x");
    GgufFile part;
    part.add("general.architecture", "llama").add("tokenizer.chat_template", "x");
    part.add("split.count", 3U);

    for (const auto& each : {plain, adapter, part}) {
        const auto read = header(each.bytes());
        ASSERT_TRUE(read);
        EXPECT_FALSE(read->isOfChatModel());
    }
}

TEST(GgufHeaderTest, AFileThatEndsAnywhereInItsHeadGivesNothing) {
    const std::string whole = GgufFile::chatModel().bytes(0);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_FALSE(header(whole.substr(0, length))) << length;
    }
}

TEST(GgufHeaderTest, AFileWithoutItsWeightsGivesNothing) {
    EXPECT_FALSE(header(GgufFile::chatModel().bytes(0)));
    EXPECT_FALSE(header(GgufFile::chatModel().bytes(32)));
    EXPECT_TRUE(header(GgufFile::chatModel().bytes(33)));
}

TEST(GgufHeaderTest, OtherFilesAndOtherVersionsGiveNothing) {
    EXPECT_FALSE(header(""));
    EXPECT_FALSE(header("GGUF"));
    EXPECT_FALSE(header(std::string(4096, '\0')));
    for (const std::uint32_t version : {0U, 1U, 4U, 0x03000000U}) {
        EXPECT_FALSE(header(GgufFile{version}.bytes())) << version;
    }
    EXPECT_TRUE(header(GgufFile{2}.bytes()));
}

TEST(GgufHeaderTest, CountsBeyondAllSenseGiveNothingAtOnce) {
    constexpr auto most = std::numeric_limits<std::uint64_t>::max();
    for (const std::uint64_t count : {std::uint64_t{1'000'000}, most, most / 2 + 1}) {
        const auto bytes = GgufFile::bytesOf<std::uint64_t>;
        const std::string head = "GGUF" + GgufFile::bytesOf(std::uint32_t{3});
        EXPECT_FALSE(header(head + bytes(count) + bytes(0) + std::string(4096, '\0')));
        EXPECT_FALSE(header(head + bytes(0) + bytes(count) + std::string(4096, '\0')));
        GgufFile text;
        text.begin("k", GgufFile::text).put(count);
        GgufFile list;
        list.begin("k", GgufFile::list).put(std::uint32_t{GgufFile::uint64}).put(count);
        GgufFile texts;
        texts.begin("k", GgufFile::list).put(std::uint32_t{GgufFile::text}).put(count);
        for (const auto& each : {text, list, texts}) EXPECT_FALSE(header(each.bytes(4096)));
    }
}

TEST(GgufHeaderTest, ListsInListsUnknownTypesAndDoubleKeysGiveNothing) {
    GgufFile nested;
    nested.begin("k", GgufFile::list).put(std::uint32_t{GgufFile::list}).put(std::uint64_t{1});
    GgufFile unknown;
    unknown.begin("k", 13);
    GgufFile twice;
    twice.add("k", 1U).add("k", 2U);
    for (const auto& each : {nested, unknown, twice}) EXPECT_FALSE(header(each.bytes(4096)));
}

TEST(GgufHeaderTest, NumbersThatMakeNoSenseCountAsUnknown) {
    GgufFile file;
    file.add("general.architecture", "llama");
    file.begin("llama.context_length", GgufFile::int32).put(std::int32_t{-5});
    file.begin("llama.block_count", GgufFile::uint64)
        .put(std::numeric_limits<std::uint64_t>::max());
    file.begin("llama.attention.head_count", GgufFile::float32).put(4.0F);
    const auto read = header(file.bytes());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->contextTokens, 0U);
    EXPECT_EQ(read->contextBytes, 0U);
}

TEST(GgufHeaderTest, AReadThatFailsGivesNothing) {
    const std::string bytes = GgufFile::chatModel().bytes();
    FileBytes file = fileBytes(bytes);
    const auto whole = file.read;
    for (std::uint64_t end = 0; end < 200; end += 7) {
        file.read = [&](std::uint64_t offset, std::span<char> target) -> std::size_t {
            if (offset >= end) return 0;
            return whole(offset, target.subspan(0, std::min<std::size_t>(target.size(), 3)));
        };
        EXPECT_FALSE(GgufHeader::read(file)) << end;
    }
}

TEST(GgufHeaderTest, RandomChangesGiveAClearOutcome) {
    const std::string whole = GgufFile::chatModel().bytes();
    std::mt19937 random{20261123};
    int read = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string bytes = whole;
        for (int change = 0; change < 4; ++change) {
            bytes[random() % bytes.size()] = static_cast<char>(random());
        }
        if (const auto result = header(bytes)) {
            ++read;
            EXPECT_LE(result->name.size(), bytes.size());
        }
    }
    EXPECT_GT(read, 0);
    EXPECT_LT(read, 20'000);
}

}  // namespace
}  // namespace orvu
