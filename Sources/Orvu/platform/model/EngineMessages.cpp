#include "platform/model/EngineMessages.h"

#include "foundation/text/Text.h"
#include "platform/model/ReplyText.h"

#include <type_traits>

namespace orvu {
namespace {

struct AnswerHead {
    static constexpr std::uint32_t expectedMagic = 0x4F724D61;

    std::uint32_t magic = expectedMagic;
    std::uint32_t number = 0;
    EngineAnswer::Kind kind = EngineAnswer::Kind::ready;
    std::uint32_t length = 0;
};

struct DescriptionHead {
    std::uint64_t contextBytes = 0;
    std::uint32_t contextTokens = 0;
    std::uint32_t canAnswer = 0;
};

static_assert(std::is_trivially_copyable_v<EngineRequest> && sizeof(EngineRequest) == 20);
static_assert(std::is_trivially_copyable_v<AnswerHead> && sizeof(AnswerHead) == 16);
static_assert(std::is_trivially_copyable_v<DescriptionHead> && sizeof(DescriptionHead) == 16);

template <class Head>
std::string bytesOf(const Head& head) {
    return {reinterpret_cast<const char*>(&head), sizeof(head)};
}

/// The head at the beginning of `bytes`, which are no fewer.
template <class Head>
Head headOf(std::string_view bytes) {
    Head head;
    bytes.copy(reinterpret_cast<char*>(&head), sizeof(head));
    return head;
}

bool isSound(const AnswerHead& head) {
    using Kind = EngineAnswer::Kind;
    if (head.magic != AnswerHead::expectedMagic) return false;
    switch (head.kind) {
        case Kind::ready:
            return head.number == 0 && head.length == 0;
        case Kind::description:
            return head.length >= sizeof(DescriptionHead) &&
                   head.length <= sizeof(DescriptionHead) + EngineAnswerReader::maxName;
        case Kind::reply:
            return head.length <= ReplyText::byteLimit;
        case Kind::failure:
            return head.length == sizeof(std::uint32_t);
    }
    return false;
}

}  // namespace

bool EngineRequest::isSound() const {
    if (magic != expectedMagic) return false;
    if (kind == Kind::ask) return length <= maxLength && instructions <= length;
    return (kind == Kind::describe || kind == Kind::cancel) && length == 0 && instructions == 0;
}

EngineAnswer EngineAnswer::of(const ModelDescription& description) {
    const DescriptionHead head{description.contextBytes, description.contextTokens,
                               description.canAnswer ? 1U : 0U};
    const auto name = wholeCodePoints(description.name, EngineAnswerReader::maxName);
    return {.kind = Kind::description, .content = bytesOf(head) + std::string{name}};
}

EngineAnswer EngineAnswer::of(ModelFailure failure) {
    return {.kind = Kind::failure, .content = bytesOf(static_cast<std::uint32_t>(failure))};
}

std::string EngineAnswer::bytes() const {
    const AnswerHead head{
        .number = number, .kind = kind, .length = static_cast<std::uint32_t>(content.size())};
    return bytesOf(head) + content;
}

std::optional<ModelDescription> EngineAnswer::description() const {
    if (kind != Kind::description || content.size() < sizeof(DescriptionHead)) return std::nullopt;
    const auto head = headOf<DescriptionHead>(content);
    if (head.canAnswer > 1) return std::nullopt;
    return ModelDescription{.canAnswer = head.canAnswer == 1,
                            .name = wellFormed(std::string_view{content}.substr(sizeof(head))),
                            .contextBytes = head.contextBytes,
                            .contextTokens = head.contextTokens};
}

ModelFailure EngineAnswer::failure() const {
    if (kind != Kind::failure || content.size() != sizeof(std::uint32_t)) {
        return ModelFailure::brokeOff;
    }
    const auto given = headOf<std::uint32_t>(content);
    constexpr auto last = static_cast<std::uint32_t>(ModelFailure::refused);
    return given < last ? static_cast<ModelFailure>(given) : ModelFailure::brokeOff;
}

std::vector<EngineAnswer> EngineAnswerReader::add(std::string_view bytes) {
    std::vector<EngineAnswer> answers;
    if (isBroken_) return answers;
    bytes_ += bytes;
    while (auto answer = take()) answers.push_back(std::move(*answer));
    if (isBroken_) answers.clear();
    return answers;
}

std::optional<EngineAnswer> EngineAnswerReader::take() {
    if (bytes_.size() < sizeof(AnswerHead)) return std::nullopt;
    const auto head = headOf<AnswerHead>(bytes_);
    isBroken_ = !isSound(head);
    if (isBroken_ || bytes_.size() - sizeof(head) < head.length) return std::nullopt;
    EngineAnswer answer{head.kind, head.number, bytes_.substr(sizeof(head), head.length)};
    bytes_.erase(0, sizeof(head) + head.length);
    return answer;
}

}  // namespace orvu
