#pragma once

#include "platform/model/GgufHeader.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// The file of a model, as far as its head goes, put together value by value.
class GgufFile {
public:
    enum Type : std::uint32_t {
        uint8 = 0,
        uint16 = 2,
        uint32 = 4,
        int32 = 5,
        float32 = 6,
        boolean = 7,
        text = 8,
        list = 9,
        uint64 = 10
    };

    explicit GgufFile(std::uint32_t version = 3) : version_(version) {}

    GgufFile& add(std::string_view key, std::string_view value) {
        begin(key, text);
        return put(value);
    }
    GgufFile& add(std::string_view key, std::uint32_t value) {
        begin(key, uint32);
        return put(value);
    }
    GgufFile& add(std::string_view key, const std::vector<std::uint32_t>& values) {
        begin(key, list);
        put(std::uint32_t{uint32}).put(std::uint64_t{values.size()});
        for (const auto each : values) put(each);
        return *this;
    }
    GgufFile& add(std::string_view key, const std::vector<std::string>& values) {
        begin(key, list);
        put(std::uint32_t{text}).put(std::uint64_t{values.size()});
        for (const auto& each : values) put(std::string_view{each});
        return *this;
    }
    GgufFile& addTensor(std::string_view name, std::uint64_t offset) {
        tensors_ += bytesOf(std::uint64_t{name.size()}) + std::string{name};
        tensors_ +=
            bytesOf(std::uint32_t{1}) + bytesOf(std::uint64_t{8}) + bytesOf(std::uint32_t{0});
        tensors_ += bytesOf(offset);
        ++tensorCount_;
        return *this;
    }
    /// The head of one fact, whose value has to follow.
    GgufFile& begin(std::string_view key, std::uint32_t type) {
        ++count_;
        return put(key).put(type);
    }
    template <class Number>
    GgufFile& put(Number value)
        requires std::is_arithmetic_v<Number>
    {
        facts_ += bytesOf(value);
        return *this;
    }
    GgufFile& put(std::string_view value) {
        facts_ += bytesOf(std::uint64_t{value.size()}) + std::string{value};
        return *this;
    }

    /// The file, with so many bytes of weights.
    [[nodiscard]] std::string bytes(std::size_t weights = 64) const {
        return "GGUF" + bytesOf(version_) + bytesOf(tensorCount_) + bytesOf(count_) + facts_ +
               tensors_ + std::string(weights, '\0');
    }

    /// A model that answers.
    [[nodiscard]] static GgufFile chatModel() {
        GgufFile file;
        file.add("general.architecture", "llama").add("general.type", "model");
        file.add("general.name", "Otter 1B").add("llama.context_length", 4096U);
        file.add("llama.block_count", 2U).add("llama.embedding_length", 64U);
        file.add("llama.attention.head_count", 4U).add("llama.attention.head_count_kv", 2U);
        file.add("tokenizer.ggml.tokens", std::vector<std::string>{"a", "b", "<|end|>"});
        file.add("tokenizer.chat_template", "{{ messages[0].content }}");
        file.addTensor("token_embd.weight", 0).addTensor("output.weight", 32);
        return file;
    }

    template <class Number>
    [[nodiscard]] static std::string bytesOf(Number value) {
        return {reinterpret_cast<const char*>(&value), sizeof(value)};
    }

private:
    std::uint32_t version_;
    std::uint64_t count_ = 0;
    std::uint64_t tensorCount_ = 0;
    std::string facts_;
    std::string tensors_;
};

/// Bytes in memory, as of a file. They must outlive what is made here.
inline FileBytes fileBytes(std::string_view bytes) {
    return {.size = bytes.size(),
            .read = [bytes](std::uint64_t offset, std::span<char> target) -> std::size_t {
                if (offset >= bytes.size()) return 0;
                const auto count = std::min<std::size_t>(target.size(), bytes.size() - offset);
                std::memcpy(target.data(), bytes.data() + offset, count);
                return count;
            }};
}

}  // namespace orvu
