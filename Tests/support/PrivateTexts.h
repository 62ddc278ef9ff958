#pragma once

#include "foundation/RandomText.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// Made-up texts of one kind that a person would not want to tell a search engine.
struct PrivateTexts {
    std::string kind;
    std::vector<std::string> texts;
};

/// Makes private texts, the same ones in each run. Lists in braces are made from left to right,
/// which sums are not.
class PrivateTextMaker {
public:
    explicit PrivateTextMaker(std::uint64_t seed) : random_(seed) {}

    std::vector<PrivateTexts> all() {
        return {make("e-mail address", [this] { return mailAddress(); }),
                make("card number with blanks", [this] { return cardNumber(" "); }),
                make("card number with hyphens", [this] { return cardNumber("-"); }),
                make("card number in one piece", [this] { return cardNumber(""); }),
                make("telephone number", [this] { return telephoneNumber(); }),
                make("web address with scheme", [this] { return "https://" + address(); }),
                make("web address without scheme", [this] { return address(); }),
                make("bank account (IBAN)", [this] { return bankAccount(); }),
                make("text of more than 120 characters", [this] { return letter(); }),
                make("password", [this] { return password(); })};
    }

private:
    template <class Make>
    PrivateTexts make(std::string kind, Make one) {
        constexpr std::size_t textsOfAKind = 60;
        PrivateTexts result{std::move(kind), {}};
        while (result.texts.size() < textsOfAKind) result.texts.push_back(one());
        return result;
    }

    template <std::size_t N>
    std::string oneOf(const std::array<std::string_view, N>& choices) {
        return std::string{choices[random_.below(N)]};
    }
    std::string word() {
        return oneOf(std::array<std::string_view, 16>{
            "anna", "müller", "otter", "clinic", "divorce", "salary", "jürgen", "results", "bank",
            "letter", "zoë", "meeting", "lawyer", "garden", "secret", "invoice"});
    }
    std::string digits(std::size_t count) {
        std::string result;
        while (result.size() < count) result += static_cast<char>('0' + random_.below(10));
        return result;
    }
    std::string domain() {
        constexpr std::array<std::string_view, 5> endings{".example", ".org", ".co.uk", ".de",
                                                          ".internal"};
        return joined({word(), oneOf(endings)});
    }
    std::string mailAddress() {
        const std::string between = oneOf(std::array<std::string_view, 4>{".", "-", "_", ""});
        return joined({word(), between, word(), digits(random_.below(3)), "@", domain()});
    }
    std::string cardNumber(std::string_view between) {
        return joined({digits(4), between, digits(4), between, digits(4), between, digits(4)});
    }
    /// Each "0" of a form stands for any digit.
    std::string telephoneNumber() {
        std::string number = oneOf(std::array<std::string_view, 8>{
            "+40 00 0000000", "000 0000 0000", "+0 (000) 000-0000", "(000) 000-0000",
            "00 00 00 00 00", "0000/0000000", "+40-000-00000000", "000000000000"});
        for (char& c : number) {
            if (c == '0') c = digits(1)[0];
        }
        return number;
    }
    std::string address() {
        return joined({domain(), "/", word(), "?token=", digits(6), "&for=", word()});
    }
    std::string bankAccount() {
        constexpr std::array<std::string_view, 3> countries{"DE", "FR", "GB"};
        std::string number = joined({oneOf(countries), digits(2)});
        if (random_.below(3) == 0) number += " BANK";
        for (std::size_t groups = 4 + random_.below(2); groups > 0; --groups) {
            number += " " + digits(4);
        }
        return number + " " + digits(2);
    }
    std::string letter() {
        std::string result = "dear " + word();
        while (result.size() < 150 + random_.below(100)) result += " " + word();
        return result;
    }
    std::string password() {
        constexpr std::string_view signs =
            "abcdefghijkmnpqrstuvwxyzABCDEFGHJKLMNPQRSTUVWXYZ23456789!$%&/()=?+*#_-";
        std::string result;
        for (std::size_t left = 8 + random_.below(9); left > 0; --left) {
            result += signs[random_.below(signs.size())];
        }
        return result;
    }

    RandomText random_;
};

}  // namespace orvu
