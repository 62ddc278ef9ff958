#include "platform/model/ModelFailure.h"

#include "foundation/text/Text.h"

#include <gtest/gtest.h>

#include <set>

namespace orvu {
namespace {

ModelFailure failureOf(int status, std::string_view body) {
    return errorOfAnswer(status, body).failure;
}

TEST(ModelFailureTest, EachFailureHasASentenceOfItsOwn) {
    std::set<std::string> sentences;
    for (int each = 0; each <= static_cast<int>(ModelFailure::refused); ++each) {
        const ModelError error{static_cast<ModelFailure>(each)};
        const std::string text = sentence(error);
        EXPECT_TRUE(text.ends_with('.')) << text;
        EXPECT_LT(text.size(), 80U) << text;
        sentences.insert(text);
    }
    EXPECT_EQ(sentences.size(), static_cast<std::size_t>(ModelFailure::refused) + 1);
}

TEST(ModelFailureTest, EachReasonHasASentence) {
    for (const auto reason :
         {UnavailableReason::noServer, UnavailableReason::noModel, UnavailableReason::othersServer,
          UnavailableReason::serverIsLoading, UnavailableReason::noFile,
          UnavailableReason::noMemory, UnavailableReason::processor, UnavailableReason::notShutIn,
          UnavailableReason::other}) {
        EXPECT_TRUE(sentence(reason).ends_with('.'));
    }
}

TEST(ModelFailureTest, AContextThatIsTooSmallIsKnownByItsWords) {
    for (const auto* text :
         {"the input length exceeds the context length",
          "the request (5000 tokens) exceeds the available context size (512 tokens), try "
          "increasing it",
          "This model's maximum context length is 4096 tokens.",
          "Trying to keep the first 5000 tokens when context the overflows."}) {
        EXPECT_EQ(errorOfText(text).failure, ModelFailure::contextTooSmall) << text;
        const std::string body = R"({"error":{"message":")" + std::string{text} + "\"}}";
        EXPECT_EQ(failureOf(400, body), ModelFailure::contextTooSmall) << text;
    }
}

TEST(ModelFailureTest, AModelThatIsGoneIsKnown) {
    EXPECT_EQ(failureOf(404, R"({"error":"model 'tiny' not found"})"), ModelFailure::modelGone);
    EXPECT_EQ(failureOf(404, "404 page not found"), ModelFailure::modelGone);
}

TEST(ModelFailureTest, AServerThatLoadsIsKnown) {
    constexpr const char* body =
        R"({"error":{"code":503,"message":"Loading model","type":"unavailable_error"}})";

    EXPECT_EQ(failureOf(503, body), ModelFailure::loading);
    EXPECT_EQ(failureOf(503, ""), ModelFailure::loading);
    EXPECT_TRUE(tellsOfLoading(body));
    EXPECT_FALSE(tellsOfLoading(""));
    EXPECT_FALSE(tellsOfLoading("<h1>Service Unavailable</h1>"));
    EXPECT_FALSE(tellsOfLoading(R"({"error":"server busy"})"));
}

TEST(ModelFailureTest, OtherAnswersAreToldApartByTheirStatus) {
    EXPECT_EQ(failureOf(401, ""), ModelFailure::locked);
    EXPECT_EQ(failureOf(403, "<html>"), ModelFailure::locked);
    EXPECT_EQ(failureOf(302, ""), ModelFailure::unreadable);
    EXPECT_EQ(failureOf(204, ""), ModelFailure::unreadable);
    EXPECT_EQ(failureOf(500, "{}"), ModelFailure::refused);
    EXPECT_EQ(failureOf(503, R"({"error":"server busy"})"), ModelFailure::refused);
}

TEST(ModelFailureTest, AServerThatCannotLeaveThoughtsOutIsKnown) {
    EXPECT_TRUE(
        errorOfAnswer(400, R"({"error":"\"tiny\" does not support thinking"})").isOfThinking);
    EXPECT_TRUE(errorOfAnswer(400, R"({"error":{"message":"unknown field enable_thinking"}})")
                    .isOfThinking);
    EXPECT_FALSE(errorOfAnswer(500, R"({"error":"out of memory"})").isOfThinking);
}

TEST(ModelFailureTest, AServersWordsAreShownAsOneShortLine) {
    const std::string whole = R"({"error":"needs more memory\u0007 (5 GiB)\nthan there is"})";

    EXPECT_EQ(sentence(errorOfAnswer(500, whole)),
              "The model server reports an error: “needs more memory  (5 GiB)”.");

    const std::string lengthy = R"({"error":")" + std::string(50000, 'x') + "\"}";
    EXPECT_EQ(characterCount(errorOfAnswer(500, lengthy).detail), 120U);
}

TEST(ModelFailureTest, BodiesThatCannotBeReadHaveNoDetail) {
    for (const std::string& body :
         {std::string{}, std::string(5000, '['), std::string{R"({"error":5})"},
          std::string{R"({"error":{"message":[]}})"}, std::string{R"({"error":null})"},
          std::string{"\0\0", 2}, std::string{"{\"error\":\"\xFF\"}"}}) {
        EXPECT_EQ(errorOfAnswer(500, body), ModelError{ModelFailure::refused});
    }
    EXPECT_EQ(sentence(ModelError{ModelFailure::refused}), "The model server reports an error.");
}

}  // namespace
}  // namespace orvu
