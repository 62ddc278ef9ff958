#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvu {

/// Image files made by hand, so that a test can say what is wrong with them.
class IconFiles {
public:
    /// A PNG that declares these sizes and holds `rows` rows of one colour, in stored blocks.
    [[nodiscard]] static std::string png(std::uint32_t width, std::uint32_t height,
                                         std::uint32_t rows, std::uint32_t rgba = 0x3366CCFF) {
        std::string header = bigEndian(width) + bigEndian(height);
        header += std::string_view{"\x08\x06\0\0\0", 5};
        std::string raw;
        for (std::uint32_t y = 0; y < rows; ++y) {
            raw.push_back('\0');
            for (std::uint32_t x = 0; x < width; ++x) raw += bigEndian(rgba);
        }
        return "\x89PNG\r\n\x1A\n" + chunk("IHDR", header) + chunk("IDAT", zlib(raw)) +
               chunk("IEND", "");
    }
    [[nodiscard]] static std::string png(std::uint32_t side) { return png(side, side, side); }
    /// An icon file of one picture, which is a PNG file.
    [[nodiscard]] static std::string icoOfPng(const std::string& image, char side) {
        std::string ico{"\0\0\1\0\1\0", 6};
        ico += side;
        ico += side;
        ico += std::string_view{"\0\0\1\0\x20\0", 6};
        return ico + littleEndian(static_cast<std::uint32_t>(image.size())) + littleEndian(22) +
               image;
    }
    /// An icon file of one picture without compression, 16 by 16, all of one colour.
    [[nodiscard]] static std::string ico(std::uint32_t argb = 0xFF3366CC) {
        std::string bitmap = littleEndian(40) + littleEndian(16) + littleEndian(32);
        bitmap += std::string_view{"\1\0\x20\0", 4};
        for (int i = 0; i < 6; ++i) bitmap += littleEndian(0);
        for (int i = 0; i < 16 * 16; ++i) bitmap += littleEndian(argb);
        bitmap += std::string(64, '\0');
        return icoOfPng(bitmap, 16);
    }
    [[nodiscard]] static std::string svg(std::string_view content) {
        return "<svg xmlns=\"http://www.w3.org/2000/svg\" "
               "xmlns:xlink=\"http://www.w3.org/1999/xlink\" width=\"16\" height=\"16\">" +
               std::string{content} + "</svg>";
    }

private:
    static std::string littleEndian(std::uint32_t value) {
        std::string bytes;
        for (int i = 0; i < 4; ++i) bytes.push_back(static_cast<char>(value >> (8 * i) & 0xFF));
        return bytes;
    }
    static std::string bigEndian(std::uint32_t value) {
        const std::string bytes = littleEndian(value);
        return {bytes.rbegin(), bytes.rend()};
    }
    static std::string chunk(const std::string& name, const std::string& content) {
        std::uint32_t crc = 0xFFFFFFFF;
        for (const char c : name + content) {
            crc ^= static_cast<unsigned char>(c);
            for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ ((crc & 1) != 0 ? 0xEDB88320U : 0);
        }
        return bigEndian(static_cast<std::uint32_t>(content.size())) + name + content +
               bigEndian(~crc);
    }
    static std::string zlib(std::string_view raw) {
        constexpr std::size_t most = 65535;
        std::uint32_t a = 1;
        std::uint32_t b = 0;
        for (const char c : raw) {
            a = (a + static_cast<unsigned char>(c)) % 65521;
            b = (b + a) % 65521;
        }
        std::string stream{"\x78\x01"};
        do {
            const auto block = raw.substr(0, most);
            raw.remove_prefix(block.size());
            const auto size = static_cast<std::uint32_t>(block.size());
            stream.push_back(raw.empty() ? '\1' : '\0');
            stream += littleEndian(size).substr(0, 2) + littleEndian(~size).substr(0, 2);
            stream += block;
        } while (!raw.empty());
        return stream + bigEndian(b << 16 | a);
    }
};

}  // namespace orvu
