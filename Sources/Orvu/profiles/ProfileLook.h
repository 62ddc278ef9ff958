#pragma once

#include "foundation/Color.h"
#include "foundation/text/Translation.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace orvu {

/// The colours of a profile.
struct ProfileLook {
    Phrase name;
    Color color;  ///< strong: the profile's icon tile
    Color frame;  ///< pale: the tint of the window
    Color deep;   ///< dark: text and symbols on the pale tint

    static const std::array<ProfileLook, 12> all;
    /// The row at `index`; the first or the last one if it lies outside the table.
    [[nodiscard]] static const ProfileLook& at(std::int64_t index);
};

inline constexpr std::array<ProfileLook, 12> ProfileLook::all{{
    {phrase("Sky"), {92, 178, 255}, {227, 240, 255}, {31, 111, 209}},
    {phrase("Mint"), {47, 201, 154}, {221, 246, 236}, {15, 122, 90}},
    {phrase("Lime"), {155, 203, 45}, {237, 246, 214}, {86, 122, 10}},
    {phrase("Sun"), {245, 184, 46}, {251, 240, 210}, {138, 97, 0}},
    {phrase("Tangerine"), {255, 138, 61}, {255, 232, 217}, {168, 75, 12}},
    {phrase("Coral"), {255, 94, 91}, {255, 225, 224}, {168, 38, 36}},
    {phrase("Rose"), {240, 98, 168}, {252, 225, 239}, {160, 35, 106}},
    {phrase("Grape"), {155, 107, 255}, {236, 227, 255}, {91, 47, 194}},
    {phrase("Indigo"), {84, 104, 255}, {227, 231, 255}, {40, 54, 184}},
    {phrase("Teal"), {31, 181, 196}, {217, 243, 246}, {11, 111, 121}},
    {phrase("Stone"), {138, 142, 150}, {236, 238, 241}, {69, 72, 79}},
    {phrase("Ink"), {18, 19, 22}, {226, 227, 230}, {18, 19, 22}},
}};

inline const ProfileLook& ProfileLook::at(std::int64_t index) {
    if (index < 0) return all.front();
    if (index >= static_cast<std::int64_t>(all.size())) return all.back();
    return all[static_cast<std::size_t>(index)];
}

}  // namespace orvu
