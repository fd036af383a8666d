#include "linux/updates/PackageCommand.h"

#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace quillo {
namespace {

using support::EnvironmentVariable;

class PackageCommandTest : public testing::Test {
protected:
    PackageCommandTest() {
        std::filesystem::create_directories(root.path() / "var/lib/dpkg/info");
        list("bash.list", "/.\n/usr\n/usr/bin/bash\n");
    }

    void list(const std::string& name, const std::string& files) {
        support::writeFile(root.path() / "var/lib/dpkg/info" / name, files);
    }

    std::optional<std::string> command(const std::filesystem::path& program) {
        return packageCommand(program, root.path());
    }

    support::TemporaryFolder root;
};

TEST_F(PackageCommandTest, LeavesTheUsersOwnFilesToThem) {
    EXPECT_EQ(command("/home/olo/quillo/bin/quillo-desktop"), std::nullopt);
    EXPECT_EQ(command("/usr/local/bin/quillo-desktop"), std::nullopt);
    EXPECT_EQ(command("/opt/quillo/bin/quillo-desktop"), std::nullopt);
}

TEST_F(PackageCommandTest, KnowsThePackageOfAProgram) {
    list("quillo:amd64.list", "/.\n/usr/bin/quillo\n/usr/bin/quillo-desktop\n");
    EXPECT_EQ(command("/usr/bin/quillo-desktop"),
              "sudo apt update && sudo apt install --only-upgrade quillo");
    list("quillo-nightly.list", "/opt/quillo/bin/quillo-desktop\n");
    EXPECT_EQ(command("/opt/quillo/bin/quillo-desktop"),
              "sudo apt update && sudo apt install --only-upgrade quillo-nightly");
}

TEST_F(PackageCommandTest, LeavesTheSystemsFolderToTheSystem) {
    EXPECT_EQ(command("/usr/bin/quillo-desktop"), "");
}

TEST_F(PackageCommandTest, KnowsSandboxes) {
    {
        const EnvironmentVariable snap("SNAP", "/snap/quillo/7");
        const EnvironmentVariable name("SNAP_INSTANCE_NAME", "quillo_two");
        EXPECT_EQ(command("/snap/quillo/7/bin/quillo-desktop"), "sudo snap refresh quillo_two");
        // A program that a snap has started.
        EXPECT_EQ(command("/home/olo/bin/quillo-desktop"), std::nullopt);
    }
    support::writeFile(root.path() / ".flatpak-info", "[Application]\n");
    EXPECT_EQ(command("/app/bin/quillo-desktop"), "flatpak update org.quillo.Quillo");
}

} // namespace
} // namespace quillo
