#include "look/view/Fonts.h"

#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <gtkmm/label.h>

#include <filesystem>
#include <fstream>

namespace orvu {
namespace {

using std::filesystem::last_write_time;

/// Whether text in this face comes out in it and not in one that stands in.
bool isKnown(const Glib::ustring& family) {
    Gtk::Label label;
    Pango::FontDescription description;
    description.set_family(family);  // as text, "Doto Black" would be a weight of "Doto"
    return label.create_pango_context()->load_font(description)->describe().get_family() == family;
}

TEST(FontsTest, TheFacesAreKnownAfterwards) {
    // The program of these tests installed them as it started, since they must be there before
    // the first text is laid out.
    EXPECT_TRUE(isKnown("Doto"));
    EXPECT_TRUE(isKnown("Doto Black"));
    EXPECT_FALSE(isKnown("Doto Nowhere"));
}

TEST(FontsTest, AFileThatIsThereAlreadyIsLeftAlone) {
    const TemporaryFolder caches;
    installFonts(caches.path());
    const auto longAgo = std::filesystem::file_time_type{};
    last_write_time(caches.path() / "fonts/Doto.ttf", longAgo);

    installFonts(caches.path());

    EXPECT_EQ(last_write_time(caches.path() / "fonts/Doto.ttf"), longAgo);
}

TEST(FontsTest, ADamagedFileIsWrittenAnew) {
    const TemporaryFolder caches;
    installFonts(caches.path());
    const auto path = caches.path() / "fonts/Doto.ttf";
    const auto size = std::filesystem::file_size(path);
    std::ofstream{path} << std::string(size, 'x');

    installFonts(caches.path());

    EXPECT_EQ(std::filesystem::file_size(path), size);
    EXPECT_NE(std::ifstream{path}.get(), 'x');
}

TEST(FontsTest, AFolderThatCanNotBeWrittenIsSurvived) {
    const TemporaryFolder caches;
    std::ofstream{caches.path() / "fonts"} << "a file in the folder's place";

    installFonts(caches.path());

    EXPECT_TRUE(std::filesystem::is_regular_file(caches.path() / "fonts"));
}

}  // namespace
}  // namespace orvu
