// Confines a test program to one known family of fonts, so that texts measure the same on every
// machine, whatever else is installed.
#pragma once

#include <gtest/gtest.h>

#include <unistd.h>
#include <cstdlib>
#include <fstream>
#include <string>

namespace test_support {

inline constexpr const char* kTestFontFolder = "/usr/share/fonts/truetype/dejavu";
inline constexpr const char* kTestFamily = "DejaVu Sans";

inline bool UseTestFonts() {
    const std::string stem =
        testing::TempDir() + "nodeline-test-fonts-" + std::to_string(::getpid());
    const std::string path = stem + ".conf";
    {
        std::ofstream file(path);
        file << "<?xml version=\"1.0\"?>\n<!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">\n"
             << "<fontconfig>\n<dir>" << kTestFontFolder << "</dir>\n<cachedir>"
             << testing::TempDir() << "nodeline-test-font-cache</cachedir>\n</fontconfig>\n";
    }
    static std::string to_remove;
    to_remove = path;
    std::atexit([] { static_cast<void>(::unlink(to_remove.c_str())); });
    return ::setenv("FONTCONFIG_FILE", path.c_str(), 1) == 0;
}

// Fonts are looked up at first use, which is in a test and thus after this.
inline const bool kUsesTestFonts = UseTestFonts();

}  // namespace test_support
