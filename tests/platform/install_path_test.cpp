#include <fnd/filesystem.h>

#include <gtest/gtest.h>

#include <filesystem>

// The build tree has the layout of an installation.
TEST(InstallPath, DefaultsToLibraryPrefix) {
    const auto program = std::filesystem::canonical("/proc/self/exe");
    const auto expected = program.parent_path().parent_path() / "share" / "tvtypes";
    EXPECT_EQ(expected.u16string(), fnd::filesystem::get_install_path());

    fnd::filesystem::set_install_path(u"/elsewhere/\u00e9");
    EXPECT_EQ(u"/elsewhere/\u00e9", fnd::filesystem::get_install_path());
    fnd::filesystem::set_install_path(u"");
    EXPECT_EQ(expected.u16string(), fnd::filesystem::get_install_path());
}
