#include "foundation/text/DisplayHost.h"

#include "foundation/text/Text.h"

#include <unicode/uidna.h>
#include <unicode/uspoof.h>

#include <algorithm>
#include <array>
#include <memory>

namespace orvu {
namespace {

constexpr std::size_t longestHost = 253;  // bytes, as the name system allows
constexpr std::size_t longestLabel = 63;  // bytes

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// Tells names in another script than they seem to be from others.
class SpoofChecker {
public:
    SpoofChecker() {
        UErrorCode failure = U_ZERO_ERROR;
        checker_.reset(uspoof_open(&failure));
        uspoof_setChecks(checker_.get(),
                         USPOOF_RESTRICTION_LEVEL | USPOOF_INVISIBLE | USPOOF_MIXED_NUMBERS |
                             USPOOF_HIDDEN_OVERLAY,
                         &failure);
        uspoof_setRestrictionLevel(checker_.get(), USPOOF_HIGHLY_RESTRICTIVE);
        if (U_FAILURE(failure)) checker_.reset();
    }

    /// Whether a part of a host can be shown in its own letters.
    [[nodiscard]] bool isHonest(const std::string& label) const {
        if (!checker_) return false;
        UErrorCode failure = U_ZERO_ERROR;
        const auto size = static_cast<std::int32_t>(label.size());
        if (uspoof_checkUTF8(checker_.get(), label.data(), size, nullptr, &failure) != 0) {
            return false;
        }
        // What every letter looks like at its plainest.
        std::array<char, 8 * longestLabel> skeleton{};
        const auto length =
            uspoof_getSkeletonUTF8(checker_.get(), 0, label.data(), size, skeleton.data(),
                                   static_cast<std::int32_t>(skeleton.size()), &failure);
        if (U_FAILURE(failure) || length > static_cast<std::int32_t>(skeleton.size())) return false;
        return !isAscii({skeleton.data(), static_cast<std::size_t>(length)});
    }

private:
    struct Close {
        void operator()(USpoofChecker* checker) const { uspoof_close(checker); }
    };
    std::unique_ptr<USpoofChecker, Close> checker_;
};

/// The two forms of a name: in its own letters, and in those that its server is asked by.
class NameForms {
public:
    NameForms() {
        UErrorCode failure = U_ZERO_ERROR;
        forms_.reset(uidna_openUTS46(UIDNA_NONTRANSITIONAL_TO_ASCII |
                                         UIDNA_NONTRANSITIONAL_TO_UNICODE | UIDNA_CHECK_BIDI |
                                         UIDNA_CHECK_CONTEXTJ,
                                     &failure));
        if (U_FAILURE(failure)) forms_.reset();
    }

    /// The form of one part; empty if it has none.
    [[nodiscard]] std::string ascii(std::string_view label) const {
        return form(label, uidna_labelToASCII_UTF8);
    }
    [[nodiscard]] std::string unicode(std::string_view label) const {
        return form(label, uidna_labelToUnicodeUTF8);
    }

private:
    struct Close {
        void operator()(UIDNA* forms) const { uidna_close(forms); }
    };
    [[nodiscard]] std::string form(std::string_view label, const auto& convert) const {
        if (!forms_) return {};
        std::array<char, 8 * longestLabel> text{};
        UIDNAInfo info = UIDNA_INFO_INITIALIZER;
        UErrorCode failure = U_ZERO_ERROR;
        const auto length =
            convert(forms_.get(), label.data(), static_cast<std::int32_t>(label.size()),
                    text.data(), static_cast<std::int32_t>(text.size()), &info, &failure);
        if (U_FAILURE(failure) || info.errors != 0) return {};
        return {text.data(), static_cast<std::size_t>(length)};
    }

    std::unique_ptr<UIDNA, Close> forms_;
};

std::string displayLabel(std::string_view label) {
    static const NameForms forms;
    static const SpoofChecker checker;
    const bool isPlain = isAscii(label) && !lowercased(label).starts_with("xn--");
    if (isPlain || label.size() > 4 * longestLabel) return std::string{label};
    std::string ascii = forms.ascii(label);
    std::string unicode = forms.unicode(label);
    const bool isHonest = !ascii.empty() && !unicode.empty() && checker.isHonest(unicode);
    if (isHonest) return unicode;
    return ascii.empty() ? std::string{label} : ascii;
}

}  // namespace

std::string displayHost(std::string_view host) {
    const bool isTooLong = host.size() > longestHost;
    std::string result;
    if (isTooLong) {
        host.remove_prefix(host.size() - longestHost);
        // A part that lost its head could read as another name.
        host.remove_prefix(std::min(host.find('.'), host.size() - 1));
        result = "…";
    }
    while (!host.empty()) {
        const auto label = host.substr(0, host.find('.'));
        result += displayLabel(label);
        host.remove_prefix(label.size());
        if (host.empty()) break;
        result += '.';
        host.remove_prefix(1);
    }
    return result;
}

}  // namespace orvu
