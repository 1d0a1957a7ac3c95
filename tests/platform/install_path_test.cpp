#include <fnd/filesystem.h>

#include <gtest/gtest.h>

#include <filesystem>

// Programs and libraries of the build lie beside one another, as where they are installed.
TEST(InstallPath, IsBesideTheLibraryUnlessSet) {
    const auto program = std::filesystem::canonical("/proc/self/exe");
    const auto expected = program.parent_path().parent_path() / "share" / "tvtypes";
    EXPECT_EQ(expected.u16string(), fnd::filesystem::get_install_path());

    fnd::filesystem::set_install_path(u"/elsewhere/\u00e9");
    EXPECT_EQ(u"/elsewhere/\u00e9", fnd::filesystem::get_install_path());
    fnd::filesystem::set_install_path(u"");
    EXPECT_EQ(expected.u16string(), fnd::filesystem::get_install_path());
}
