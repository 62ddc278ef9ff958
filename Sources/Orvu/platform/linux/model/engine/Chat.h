#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct llama_model;

namespace orvu {

/// One question in the form in which a model was taught to read it, and the way to read what the
/// model says then. Where the engine's library for that is there, the model's own template is run;
/// else it must be one of those that the engine knows.
class Chat {
public:
    /// A null pointer if the model has no template, or one that can't be used.
    [[nodiscard]] static std::unique_ptr<Chat> begin(const llama_model* model,
                                                     const std::string& instructions,
                                                     const std::string& prompt);
    virtual ~Chat() = default;

    /// All that the model reads, with the marks of its template.
    [[nodiscard]] virtual const std::string& text() const = 0;
    /// Marks that are to be seen in what the model says.
    [[nodiscard]] virtual std::vector<std::string> shownMarks() const = 0;
    /// Texts after which the model has nothing more to say.
    [[nodiscard]] virtual std::vector<std::string> stops() const = 0;
    /// Texts that end a thought.
    [[nodiscard]] virtual std::vector<std::string> thoughtEnds() const = 0;
    /// The reply in all that the model said, without its thoughts.
    [[nodiscard]] virtual std::string reply(const std::string& said) const = 0;
};

}  // namespace orvu
