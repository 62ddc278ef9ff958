#include "platform/model/ModelList.h"

#include <gtest/gtest.h>

#include <string>

namespace orvu {
namespace {

std::string nameOfChosen(const std::optional<std::vector<ListedModel>>& models) {
    const auto chosen = models ? chosenModel(*models) : std::nullopt;
    return chosen ? chosen->name : "";
}
std::string chosenOllama(const std::string& entries) {
    return nameOfChosen(ollamaModels("{\"models\":[" + entries + "]}"));
}
std::string chosenOpenAI(const std::string& entries) {
    return nameOfChosen(openAIModels("{\"object\":\"list\",\"data\":[" + entries + "]}"));
}
/// An entry whose model was changed at a time.
std::string tag(const std::string& name, const std::string& date) {
    return R"({"name":")" + name + R"(","model":")" + name + R"(","modified_at":")" + date + "\"}";
}

TEST(ModelListTest, OllamaIsKnownByItsVersion) {
    EXPECT_TRUE(isOllamaVersion(R"({"version":"0.12.6"})"));
    for (const auto* other : {"", "{}", R"({"version":12})", R"({"version":""})", "\"0.12.6\"",
                              "[]", "<html>", "Ollama is running", R"([{"version":"1"}])"}) {
        EXPECT_FALSE(isOllamaVersion(other)) << other;
    }
}

TEST(ModelListTest, TheModelChangedLastIsChosen) {
    EXPECT_EQ(
        chosenOllama(tag("a", "2026-01-02T03:04:05Z") + "," + tag("b", "2026-03-02T03:04:05Z") +
                     "," + tag("c", "2025-12-31T23:59:59Z")),
        "b");
}

TEST(ModelListTest, DatesAreComparedWithTheirZonesAndFractions) {
    EXPECT_EQ(chosenOllama(tag("a", "2026-01-02T12:00:00.5+02:00") + "," +
                           tag("b", "2026-01-02T03:00:00.123456789-07:30")),
              "b");
    EXPECT_EQ(chosenOllama(tag("a", "2026-01-02T12:00:00.25Z") + "," +
                           tag("b", "2026-01-02T12:00:00.125Z")),
              "a");
}

TEST(ModelListTest, ADateThatCannotBeReadIsTheOldest) {
    for (const auto* date :
         {"", "yesterday", "2026-13-01T00:00:00Z", "2026-02-30T00:00:00Z", "2026-01-01T00:00:00",
          "2026-01-01T00:00:00+1", "2026-01-01T00:00:00.Zx", "-026-01-01T00:00:00Z",
          "99999999999999999999", "2026-01-01T00:00:00.999999999999999999999999999999x"}) {
        EXPECT_EQ(chosenOllama(tag("a", date) + "," + tag("b", "0001-01-01T00:00:00Z")), "b")
            << date;
    }
}

TEST(ModelListTest, AmongEqualsTheFirstIsChosen) {
    EXPECT_EQ(chosenOllama(R"({"name":"a"},{"name":"b"})"), "a");
    EXPECT_EQ(chosenOpenAI(R"({"id":"a","created":5},{"id":"b","created":5})"), "a");
}

TEST(ModelListTest, ModelsThatOnlyEmbedAreNeverChosen) {
    for (const auto* name : {"nomic-embed-text:latest", "mxbai-embed-large", "all-minilm:22m",
                             "bge-m3", "text-embedding-nomic-embed-text-v1.5",
                             "snowflake-arctic-embed2", "multilingual-e5-large"}) {
        EXPECT_EQ(chosenOllama(tag(name, "2026-03-02T03:04:05Z")), "") << name;
        EXPECT_EQ(chosenOpenAI(R"({"id":")" + std::string{name} + "\"}"), "") << name;
    }
    EXPECT_EQ(chosenOllama(R"({"name":"a","details":{"family":"nomic-bert"}})"), "");
    EXPECT_EQ(chosenOllama(R"({"name":"a","capabilities":["embedding"]})"), "");
    EXPECT_EQ(chosenOpenAI(R"({"id":"a","type":"embeddings"},{"id":"b","type":"llm"})"), "b");
    EXPECT_EQ(chosenOllama(R"({"name":"a","capabilities":["completion","tools"]})"), "a");
}

TEST(ModelListTest, ModelsOfOtherComputersAreNeverChosen) {
    EXPECT_EQ(chosenOllama(tag("gpt-oss:120b-cloud", "2026-03-02T03:04:05Z")), "");
    EXPECT_EQ(chosenOllama(tag("deepseek:cloud", "2026-03-02T03:04:05Z")), "");
    EXPECT_EQ(chosenOllama(R"({"name":"mine","remote_host":"https://models.example:443"})"), "");
    EXPECT_EQ(chosenOllama(R"({"name":"mine","remote_model":"large"},{"name":"here"})"), "here");
}

TEST(ModelListTest, ALoadedModelComesBeforeLaterOnes) {
    EXPECT_EQ(chosenOpenAI(R"({"id":"a","created":9},{"id":"b","created":1,)"
                           R"("status":{"value":"loaded"}})"),
              "b");
    EXPECT_EQ(chosenOpenAI(R"({"id":"a","state":"not-loaded"},{"id":"b","state":"loaded"})"), "b");
}

TEST(ModelListTest, OfLoadedModelsTheOneUsedLastIsChosen) {
    const auto loaded =
        loadedOllamaModels(R"({"models":[{"name":"a","expires_at":"2026-01-01T10:05:00Z"},)"
                           R"({"name":"nomic-embed-text","expires_at":"2026-01-01T10:09:00Z"},)"
                           R"({"name":"b","expires_at":"2026-01-01T10:07:00Z"}]})");

    EXPECT_EQ(nameOfChosen(loaded), "b");
    EXPECT_TRUE(loaded->front().isLoaded);
}

TEST(ModelListTest, NothingIsLoadedInAnEmptyList) {
    EXPECT_EQ(loadedOllamaModels(R"({"models":[]})"), std::vector<ListedModel>{});
    EXPECT_EQ(ollamaModels(R"({"models":[]})"), std::vector<ListedModel>{});
    EXPECT_EQ(chosenModel({}), std::nullopt);
}

TEST(ModelListTest, OtherAnswersAreNoListAtAll) {
    for (const std::string_view body :
         {"", "[]", "null", "{}", R"({"models":{}})", R"({"models":null})", R"({"data":"x"})",
          R"({"models":[)", "<!doctype html><title>Hello</title>", "{\"models\":[\"\xFF\"]}"}) {
        EXPECT_EQ(ollamaModels(body), std::nullopt) << body;
        EXPECT_EQ(openAIModels(body), std::nullopt) << body;
    }
    EXPECT_EQ(ollamaModels(std::string(5000, '[')), std::nullopt);
    EXPECT_EQ(openAIModels(R"({"data":)" + std::string(5000, '[') + std::string(5000, ']') + "}"),
              std::nullopt);
}

TEST(ModelListTest, EntriesWithoutANameThatCanBeAskedForAreLeftOut) {
    const std::string entries =
        R"(1,null,"x",[],{},{"id":5},{"id":""},{"id":"a\nb"},{"id":"\u0000"},{"id":")" +
        std::string(600, 'x') + R"("},{"id":"good","created":"soon"})";

    EXPECT_EQ(openAIModels("{\"data\":[" + entries + "]}"),
              (std::vector<ListedModel>{{.name = "good"}}));
}

TEST(ModelListTest, HugeNumbersAreNoDates) {
    EXPECT_EQ(chosenOpenAI(R"({"id":"a","created":1e308},{"id":"b"})"), "a");
    EXPECT_EQ(chosenOpenAI(R"({"id":"a","created":-1e308},{"id":"b","created":1})"), "b");
    EXPECT_EQ(openAIModels(R"({"data":[{"id":"a","created":99999999999999999999999}]})"),
              std::nullopt);
}

TEST(ModelListTest, TheServersOwnerIsKept) {
    const auto models = openAIModels(R"({"data":[{"id":"a","owned_by":"llamacpp"}]})");

    EXPECT_EQ(models->front().owner, "llamacpp");
}

}  // namespace
}  // namespace orvu
