#include "sync/DeviceFile.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace quillo {
namespace {

const Uuid laptop = *Uuid::parse("6F9619FF-8B86-D011-B42D-00CF4FC964FF");

std::optional<DeviceFile> readFile(std::string_view bytes) {
    const auto read = decodeDeviceFile(bytes);
    const auto* const file = std::get_if<DeviceFile>(&read);
    return file ? std::optional(*file) : std::nullopt;
}

TEST(DeviceFile, IsWrittenAsDescribed) {
    EXPECT_EQ(encodeDeviceFile({{laptop, "laptop", "Quillo 1.2"}, {Data("[]"), 1741081260.25}}),
              R"({"format":1,"device":"6F9619FF-8B86-D011-B42D-00CF4FC964FF","name":"laptop",)"
              R"("app":"Quillo 1.2","items":"W10=","stamp":1741081260.25})"
              "\n");
}

RC_GTEST_PROP(DeviceFile, ComesBackAsItWas, ()) {
    const auto letters = rc::gen::container<std::string>(rc::gen::inRange<char>(0, 127));
    const double stamp = std::abs(*rc::gen::arbitrary<double>());
    RC_PRE(std::isfinite(stamp));
    const DeviceFile file{{laptop, *letters, *letters},
                          {Data(*rc::gen::container<std::string>(rc::gen::arbitrary<char>())), stamp}};
    RC_ASSERT(readFile(encodeDeviceFile(file).value()) == file);
}

TEST(DeviceFile, OfAMachineWithAnyNameCanBeRead) {
    const auto bytes = encodeDeviceFile({{laptop,
                                          "k\xFC"
                                          "che\n\"",
                                          ""},
                                         {Data("[]"), 1}});
    EXPECT_EQ(readFile(bytes.value())->device.name, "k?che\n\"");
}

TEST(DeviceFile, ReadsMembersInAnyOrderAndSkipsOthers) {
    const auto file = readFile(R"( {"stamp": 7, "x": {"y": [1]}, "items": "W10=", "app": "", "name": "é",
        "device": "6f9619ff-8b86-d011-b42d-00cf4fc964ff", "format": 1} )");
    ASSERT_TRUE(file);
    EXPECT_EQ(*file, (DeviceFile{{laptop, "é", ""}, {Data("[]"), 7}}));
}

TEST(DeviceFile, OfAnotherFormatIsToldApartFromDamage) {
    for (const char* format : {"2", "0", "1.5", "\"1\"", "null", "[]"})
        EXPECT_TRUE(std::holds_alternative<UnknownFormat>(
            decodeDeviceFile(std::string(R"({"format":)") + format + "}")))
            << format;
    for (const char* bytes : {"", "{", "[]", "null", "{}", "{\"format\":1}", "\xFF", "{\"format\":1} x"})
        EXPECT_TRUE(std::holds_alternative<Error>(decodeDeviceFile(bytes))) << bytes;
}

TEST(DeviceFile, IsReadOnlyWholeAndSound) {
    const std::string sound =
        encodeDeviceFile({{laptop, "laptop", "Quillo"}, {Data("[]"), 1741081260.25}}).value();
    ASSERT_TRUE(readFile(sound));
    for (std::size_t length = 0; length + 2 < sound.size(); ++length)
        EXPECT_FALSE(readFile(sound.substr(0, length))) << length;
    const auto replaced = [&](std::string_view what, std::string_view by) {
        std::string bytes = sound;
        return bytes.replace(bytes.find(what), what.size(), by);
    };
    for (const char* stamp : {"-1", "-0.5", "1e400", "\"1\"", "null", "true"})
        EXPECT_FALSE(readFile(replaced("1741081260.25", stamp))) << stamp;
    for (const char* items : {"7", "null", "\"W10\"", "\"W1 =\"", "[]"})
        EXPECT_FALSE(readFile(replaced("\"W10=\"", items))) << items;
    EXPECT_FALSE(readFile(replaced("6F9619FF-8B86-D011-B42D-00CF4FC964FF", "6F9619FF")));
    EXPECT_FALSE(readFile(replaced("\"laptop\"", "5")));
    EXPECT_FALSE(readFile(replaced("\"app\"", "\"map\"")));
}

TEST(DeviceFile, HasABound) {
    const DeviceFile file{{laptop, "", ""}, {Data(std::string(largestDeviceFile / 4 * 3, 'x')), 1}};
    EXPECT_FALSE(encodeDeviceFile(file));
    EXPECT_FALSE(readFile(std::string(largestDeviceFile + 1, ' ')));
    const DeviceFile large{{laptop, "", ""}, {Data(std::string(largestDeviceFile / 4 * 3 - 300, 'x')), 1}};
    EXPECT_EQ(readFile(encodeDeviceFile(large).value()), large);
}

TEST(DeviceFile, HasItsDevicesName) {
    EXPECT_EQ(deviceFileName(laptop), "6F9619FF-8B86-D011-B42D-00CF4FC964FF.json");
    EXPECT_EQ(deviceOfFileName(deviceFileName(laptop)), laptop);
    const std::string id = laptop.toString();
    for (const std::string& name :
         {id, id + ".JSON", id + ".json~", "~" + id + ".tmp",
          id + ".sync-conflict-20250304-094100-ABCDEFG.json",
          id + " (conflicted copy 2025-03-04 094100).json", id + " (laptop's conflicted copy).json",
          ".syncthing." + id + ".json.tmp", id + ".json.tmp", id + " 2.json", std::string(".json"),
          std::string("6f9619ff-8b86-d011-b42d-00cf4fc964ff.json")})
        EXPECT_FALSE(deviceOfFileName(name)) << name;
}

} // namespace
} // namespace quillo
