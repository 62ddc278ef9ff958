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
        std::string raw;
        for (std::uint32_t y = 0; y < rows; ++y) {
            raw.push_back('\0');
            for (std::uint32_t x = 0; x < width; ++x) raw += bigEndian(rgba);
        }
        return pngOf(width, height, zlib(raw));
    }
    /// A PNG that declares these sizes and holds compressed rows, each behind a zero.
    [[nodiscard]] static std::string pngOf(std::uint32_t width, std::uint32_t height,
                                           const std::string& rows) {
        std::string header = bigEndian(width) + bigEndian(height);
        header += std::string_view{"\x08\x06\0\0\0", 5};
        return "\x89PNG\r\n\x1A\n" + chunk("IHDR", header) + chunk("IDAT", rows) +
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
    /// A bitmap of 24 bits a pixel that declares these sizes and holds `rows` rows of one colour.
    [[nodiscard]] static std::string bmp(std::uint32_t width, std::uint32_t height,
                                         std::uint32_t rows, std::uint32_t rgb = 0x3366CC) {
        constexpr std::uint32_t headSize = 54;
        std::string pixels;
        for (std::uint32_t y = 0; y < rows; ++y) {
            const std::size_t begin = pixels.size();
            for (std::uint32_t x = 0; x < width; ++x) pixels += littleEndian(rgb).substr(0, 3);
            pixels.resize(begin + (3 * width + 3) / 4 * 4);
        }
        const auto size = static_cast<std::uint32_t>(pixels.size());
        std::string info = littleEndian(40) + littleEndian(width) + littleEndian(height);
        info += std::string_view{"\1\0\x18\0\0\0\0\0", 8};
        info += littleEndian(size) + std::string(16, '\0');
        return "BM" + littleEndian(headSize + size) + littleEndian(0) + littleEndian(headSize) +
               info + pixels;
    }
    /// A GIF of one colour that declares this size and holds a frame of 16 by 16 pixels.
    [[nodiscard]] static std::string gif(std::uint32_t side = 16) {
        const std::string size = littleEndian(side).substr(0, 2);
        std::string file = "GIF89a" + size + size;
        file += std::string_view{"\x80\0\0\x33\x66\xCC\0\0\0", 9};
        file += std::string_view{"\x2C\0\0\0\0\x10\0\x10\0\0\2", 11};
        const std::string data = gifPixels(256);
        for (std::size_t at = 0; at < data.size(); at += 255) {
            const auto block = data.substr(at, 255);
            file += static_cast<char>(block.size()) + block;
        }
        return file + std::string{"\0;", 2};
    }
    /// A JPEG of 8 by 8 pixels of one colour, nearly that of the others.
    [[nodiscard]] static std::string jpeg() {
        constexpr std::string_view digits =
            "ffd8ffe000104a46494600010100000100010000ffdb0043000d090a0b0a080d0b0a0b0e0e0d0f132015"
            "13121213271c1e17202e2931302e292d2c333a4a3e333646372c2d405741464c4e525352323e5a615a50"
            "604a51524fffdb0043010e0e0e131113261515264f352d354f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f"
            "4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4fffc00011080008000803"
            "012200021101031101ffc4001500010100000000000000000000000000000005ffc40014100100000000"
            "000000000000000000000000ffc4001501010100000000000000000000000000000506ffc40014110100"
            "000000000000000000000000000000ffda000c03010002110311003f009a028863ffd9";
        std::string bytes;
        for (std::size_t at = 0; at < digits.size(); at += 2) {
            bytes += static_cast<char>(std::stoi(std::string{digits.substr(at, 2)}, nullptr, 16));
        }
        return bytes;
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
    /// As many pixels of the first colour, without compression: each in a code of three bits, and a
    /// clear code before every second one, so that codes stay that short.
    static std::string gifPixels(int count) {
        constexpr unsigned clear = 4;
        constexpr unsigned end = 5;
        std::string bytes;
        unsigned bits = 0;
        int held = 0;
        const auto add = [&](unsigned code) {
            bits |= code << held;
            held += 3;
            for (; held >= 8; held -= 8, bits >>= 8) bytes += static_cast<char>(bits & 0xFF);
        };
        for (int i = 0; i < count; ++i) {
            if (i % 2 == 0) add(clear);
            add(0);
        }
        add(end);
        bytes += static_cast<char>(bits);
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
