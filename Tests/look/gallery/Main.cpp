#include "look/view/Fonts.h"
#include "look/view/Style.h"
#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <gtkmm/application.h>
#include <gtkmm/settings.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!gtk_init_check()) return 1;
    const auto application = Gtk::Application::create("app.orvu.Orvu");
    application->register_application();
    Gtk::Settings::get_default()->property_gtk_enable_animations() = false;
    const orvu::TemporaryFolder caches;
    orvu::installFonts(caches.path());
    orvu::installStyle();
    return RUN_ALL_TESTS();
}
