#include "linux/loginitem/AutostartEntry.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace quillo {
namespace {

using support::bytesOf;
using support::namesIn;
using support::writeFile;

class AutostartEntryTest : public testing::Test {
protected:
    const support::TemporaryFolder home;
    const std::filesystem::path folder = home.path() / "config" / "autostart";
    const std::filesystem::path file = folder / "org.quillo.Quillo.desktop";
    const AutostartEntry entry{folder};

    void write(const std::string& text) {
        std::filesystem::create_directories(folder);
        writeFile(file, text);
    }
};

TEST_F(AutostartEntryTest, IsOffWhereThereIsNoFile) {
    EXPECT_FALSE(entry.isOn());
    EXPECT_TRUE(entry.turnOff());
    EXPECT_EQ(namesIn(home.path()), std::vector<std::string>{});
}

TEST_F(AutostartEntryTest, LeavesExactlyOneFileWhenTurnedOnAndNoneWhenTurnedOff) {
    ASSERT_TRUE(entry.turnOn());
    EXPECT_TRUE(entry.isOn());
    EXPECT_EQ(namesIn(folder), std::vector<std::string>{"org.quillo.Quillo.desktop"});
    EXPECT_EQ(bytesOf(file), "[Desktop Entry]\n"
                             "Type=Application\n"
                             "Name=Quillo\n"
                             "Icon=org.quillo.Quillo\n"
                             "Exec=quillo-desktop\n"
                             "Terminal=false\n"
                             "X-GNOME-Autostart-enabled=true\n");
    ASSERT_TRUE(entry.turnOff());
    EXPECT_FALSE(entry.isOn());
    EXPECT_EQ(namesIn(folder), std::vector<std::string>{});
}

TEST_F(AutostartEntryTest, IsOffWhereTheDesktopHasSwitchedItOffInTheFile) {
    for (const char* line : {"Hidden=true", "Hidden = true", "X-GNOME-Autostart-enabled=false"}) {
        write("[Desktop Entry]\nType=Application\nExec=quillo-desktop\n" + std::string(line) + "\n");
        EXPECT_FALSE(entry.isOn()) << line;
    }
}

TEST_F(AutostartEntryTest, IsOnWhateverElseIsInTheFile) {
    for (const char* text :
         {"[Desktop Entry]\nHidden=false\n", "# Hidden=true\n[Desktop Entry]\n#Hidden=true\n",
          "[Desktop Entry]\n[Desktop Action other]\nHidden=true\n", ""}) {
        write(text);
        EXPECT_TRUE(entry.isOn()) << text;
    }
}

TEST_F(AutostartEntryTest, TurningItOnReplacesWhatTheDesktopHasSwitchedOff) {
    write("[Desktop Entry]\nExec=quillo-desktop\nHidden=true\n");
    ASSERT_TRUE(entry.turnOn());
    EXPECT_TRUE(entry.isOn());
    EXPECT_EQ(bytesOf(file).find("Hidden"), std::string::npos);
}

TEST_F(AutostartEntryTest, SaysWhyItCannotBeTurnedOnAndLeavesNothingBehind) {
    writeFile(home.path() / "config", "a file where the folder would be");
    const Outcome outcome = entry.turnOn();
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().message, "the autostart folder cannot be made: Not a directory");
    EXPECT_FALSE(entry.isOn());
    EXPECT_TRUE(entry.turnOff());
    EXPECT_EQ(namesIn(home.path()), std::vector<std::string>{"config"});
}

TEST_F(AutostartEntryTest, SaysWhyItCannotBeWrittenOrRemoved) {
    std::filesystem::create_directories(file / "a folder where the file would be");
    const Outcome on = entry.turnOn();
    ASSERT_FALSE(on);
    EXPECT_EQ(on.error().message.rfind("the autostart file cannot be written: ", 0), 0U)
        << on.error().message;
    EXPECT_FALSE(entry.isOn());
    const Outcome off = entry.turnOff();
    ASSERT_FALSE(off);
    EXPECT_EQ(off.error().message, "the autostart file cannot be removed: Directory not empty");
}

} // namespace
} // namespace quillo
