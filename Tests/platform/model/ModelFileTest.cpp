#include "platform/model/ModelFile.h"

#include <gtest/gtest.h>

#include <random>

namespace orvu {
namespace {

constexpr std::uint64_t gigabyte = 1'000'000'000;

KnownModel model(const std::string& name, double gigabytes) {
    return {.file = {.path = "/models/" + name + ".gguf",
                     .size = static_cast<std::uint64_t>(gigabytes * gigabyte),
                     .changed = 17},
            .description = {
                .canAnswer = true, .name = name, .contextBytes = 1000, .contextTokens = 8192}};
}
KnownModel usedAt(KnownModel model, std::int64_t turn) {
    model.turn = turn;
    return model;
}
std::string chosen(const std::vector<KnownModel>& models, ModelRoom room) {
    const auto model = modelToRun(models, room);
    return model ? model->description.name : "";
}

TEST(ModelFileTest, TheLargestThatIsBearableIsRun) {
    const ModelRoom room{.freeMemory = 100 * gigabyte, .threads = 3};  // up to 4.5 GB
    EXPECT_EQ(chosen({model("a", 1), model("b", 4), model("c", 8)}, room), "b");
    EXPECT_EQ(chosen({model("a", 4.5), model("b", 4.6)}, room), "a");
}

TEST(ModelFileTest, MoreThreadsBearMoreAndOneIsAlwaysThere) {
    EXPECT_EQ((ModelRoom{.threads = 0}.bearableSize()), 3 * gigabyte / 2);
    EXPECT_EQ((ModelRoom{.threads = 1}.bearableSize()), 3 * gigabyte / 2);
    EXPECT_EQ((ModelRoom{.threads = 4}.bearableSize()), 6 * gigabyte);
    EXPECT_EQ((ModelRoom{.threads = 64}.bearableSize()), 15 * gigabyte / 2);
}

TEST(ModelFileTest, WhereNoneIsBearableTheSmallestIsRun) {
    const ModelRoom room{.freeMemory = 100 * gigabyte, .threads = 1};
    EXPECT_EQ(chosen({model("a", 9), model("b", 3), model("c", 4)}, room), "b");
}

TEST(ModelFileTest, TheOneUsedLastGoesFirstWhileItFits) {
    const std::vector models{model("a", 1), usedAt(model("b", 0.5), 100),
                             usedAt(model("c", 9), 200)};
    EXPECT_EQ(chosen(models, {.freeMemory = 100 * gigabyte, .threads = 1}), "c");
    EXPECT_EQ(chosen(models, {.freeMemory = 10 * gigabyte, .threads = 1}), "b");
}

TEST(ModelFileTest, OnlySixtyHundredthsOfTheFreeMemoryAreTaken) {
    EXPECT_EQ(chosen({model("a", 1)}, {.freeMemory = 10 * gigabyte / 6, .threads = 4}), "");
    EXPECT_EQ(chosen({model("a", 1)}, {.freeMemory = 11 * gigabyte / 6, .threads = 4}), "a");
    EXPECT_EQ(chosen({model("a", 1)}, {.freeMemory = 0, .threads = 4}), "");
}

TEST(ModelFileTest, TheContextHasToFitToo) {
    KnownModel wide = model("a", 1);
    wide.description.contextBytes = 200'000;  // 1.6 GB for 8,192 tokens
    EXPECT_EQ(chosen({wide}, {.freeMemory = 4 * gigabyte, .threads = 4}), "");
    EXPECT_EQ(chosen({wide}, {.freeMemory = 5 * gigabyte, .threads = 4}), "a");
    wide.description.contextBytes = UINT64_MAX;
    EXPECT_EQ(chosen({wide}, {.freeMemory = 5 * gigabyte, .threads = 4}), "");
    wide.file.size = UINT64_MAX;
    EXPECT_EQ(chosen({wide}, {.freeMemory = UINT64_MAX, .threads = 4}), "");
}

TEST(ModelFileTest, WhatCannotAnswerIsNeverRunAndAmongEqualsTheFirstIs) {
    KnownModel mute = usedAt(model("mute", 1), 100);
    mute.description.canAnswer = false;
    const ModelRoom room{.freeMemory = 100 * gigabyte, .threads = 4};
    EXPECT_EQ(chosen({mute}, room), "");
    EXPECT_EQ(chosen({mute, model("a", 1), model("b", 1)}, room), "a");
    EXPECT_EQ(chosen({}, room), "");
}

TEST(ModelFileTest, ANameIsThatOfThePlaceElseOfTheModelElseOfTheFile) {
    KnownModel known = model("Otter 1B", 1);
    EXPECT_EQ(shownName(known), "Otter 1B");
    known.file.name = "otter:1b";
    EXPECT_EQ(shownName(known), "otter:1b");
    known.file.name.clear();
    known.description.name.clear();
    EXPECT_EQ(shownName(known), "Otter 1B");
    known.file.path = "/models/\xFF.gguf";
    EXPECT_EQ(shownName(known), "\uFFFD");
}

TEST(ModelFileTest, TheListComesBack) {
    std::vector models{model("a", 1), usedAt(model("\u00E9 \"b\"", 2.5), 815)};
    models[0].file.name = "a:latest";
    models[1].description.canAnswer = false;
    EXPECT_EQ(decodedModels(encodedModels(models)), models);
    EXPECT_EQ(decodedModels(encodedModels({})), std::vector<KnownModel>{});
}

TEST(ModelFileTest, OfADamagedListWhatMakesSenseIsKept) {
    const std::string good = encodedModels({model("a", 1)});
    const std::string entry = good.substr(1, good.size() - 2);
    EXPECT_EQ(decodedModels("[1,{}," + entry + ",\"x\",{\"path\":\"\"}]").size(), 1U);
    for (const auto* text : {"", "[", "{}", "null", "\"a\"", "[[[[", "[-1]"}) {
        EXPECT_TRUE(decodedModels(text).empty()) << text;
    }
    std::string negative = good;
    negative.replace(negative.find("1000000000"), 2, "-1");
    EXPECT_TRUE(decodedModels(negative).empty());
}

std::string manifest(const std::string& layers) {
    return R"({"schemaVersion":2,"config":{"digest":"sha256:x"},"layers":[)" + layers + "]}";
}
std::string layer(const std::string& kind, const std::string& digest) {
    return R"({"mediaType":"application/vnd.ollama.image.)" + kind + R"(","digest":")" + digest +
           R"(","size":5})";
}
const std::string digits(64, 'a');

TEST(ModelFileTest, AManifestNamesItsModel) {
    EXPECT_EQ(modelsOfManifest(manifest(layer("template", "sha256:" + std::string(64, 'b')) + "," +
                                        layer("model", "sha256:" + digits))),
              std::vector{"sha256-" + digits});
}

TEST(ModelFileTest, AManifestLeadsNowhereElse) {
    for (const auto& digest :
         {std::string{"sha256:../../../../etc/passwd"}, "sha256:" + digits + "/../x",
          "sha256:" + std::string(63, 'a') + "/", "sha256:" + std::string(64, 'A'), digits,
          std::string{"sha256:"}, "sha512:" + digits, "sha256:" + std::string(63, 'a')}) {
        EXPECT_TRUE(modelsOfManifest(manifest(layer("model", digest))).empty()) << digest;
    }
    for (const auto* text : {"", "{}", "[]", R"({"layers":{}})", R"({"layers":[1,null,[]]})"}) {
        EXPECT_TRUE(modelsOfManifest(text).empty()) << text;
    }
    EXPECT_TRUE(modelsOfManifest(manifest(layer("projector", "sha256:" + digits))).empty());
}

TEST(ModelFileTest, RandomChangesOfAListGiveAClearOutcome) {
    const std::string whole = encodedModels({model("a", 1), model("b", 2)});
    std::mt19937 random{20261123};
    for (int round = 0; round < 5000; ++round) {
        std::string text = whole;
        for (int change = 0; change < 3; ++change) {
            text[random() % text.size()] = static_cast<char>(random());
        }
        const auto models = decodedModels(text);
        EXPECT_LE(models.size(), 2U);
        EXPECT_EQ(decodedModels(encodedModels(models)), models);
    }
}

}  // namespace
}  // namespace orvu
