#include <gtest/gtest.h>
#include <gtk/gtk.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!gtk_init_check()) return 1;
    return RUN_ALL_TESTS();
}
