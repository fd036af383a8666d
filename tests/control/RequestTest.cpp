#include "control/Request.h"

#include "support/ArbitraryTodoItem.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace quillo;
using namespace quillo::control;

namespace {

/// The last text carries what JSON must escape.
const Request requests[] = {
    {Add{"Call mom tomorrow at 9am"}, "Europe/Berlin", "de_DE"},
    {SetDone{"1", true}, "UTC", "en_US"},
    {SetDone{"0123abcd", false}, "UTC", "en_US"},
    {Edit{"12", "New title"}, "UTC", "en_US"},
    {Delete{"3"}, "UTC", "en_US"},
    {ClearCompleted{}, "UTC", "en_US"},
    {Remind{"4", "friday at noon"}, "Asia/Tokyo", "ja_JP"},
    {Remind{"4", ""}, "UTC", "en_US"},
    {Restore{10}, "UTC", "en_US"},
    {UseModel{"http://127.0.0.1:8080 small"}, "UTC", "en_US"},
    {UseSync{"folder /home/me/Sync", "theirs"}, "UTC", "en_US"},
    {UseSync{"webdav https://example.org/dav me", "", "pässword"}, "UTC", "en_US"},
    {SyncNow{}, "UTC", "en_US"},
    {SyncNow{""}, "UTC", "en_US"},
    {ForgetDevice{"6F9619FF"}, "UTC", "en_US"},
    {Show{Show::Window::popover}, "UTC", "en_US"},
    {Show{Show::Window::quickAdd}, "UTC", "en_US"},
    {Show{Show::Window::settings}, "UTC", "en_US"},
    {Show{Show::Window::statistics}, "UTC", "en_US"},
    {Quit{}, "UTC", "en_US"},
    {Add{"\" \\ \n \x01 \u2028 \U0001F438"}, "", ""},
};

std::string complaintAbout(std::string_view line) {
    const Result<Request> request = decodeRequest(line);
    return request ? "" : request.error().message;
}

TEST(Request, ComesBackAsItWasSent) {
    for (const Request& request : requests) {
        const std::string line = encode(request);
        EXPECT_EQ(line.find('\n'), line.size() - 1) << line;
        const Result<Request> back = decodeRequest(line);
        ASSERT_TRUE(back) << back.error().message << " in " << line;
        EXPECT_EQ(*back, request) << line;
    }
}

RC_GTEST_PROP(Request, CarriesAnyText, ()) {
    const Request request{Add{*rc::Arbitrary<TodoItem>::unicodeText()}, "UTC", "en_US"};
    const Result<Request> back = decodeRequest(encode(request));
    RC_ASSERT(back.ok());
    RC_ASSERT(*back == request);
}

TEST(Request, HasThePublishedForm) {
    EXPECT_EQ(encode({Add{"Buy milk"}, "Europe/Berlin", "de_DE"}),
              "{\"command\":\"add\",\"text\":\"Buy milk\",\"tz\":\"Europe/Berlin\",\"locale\":\"de_DE\"}\n");
}

TEST(Request, SkipsMembersThatItDoesNotKnow) {
    const auto request = decodeRequest(
        R"({"later":[1,{}],"command":"delete","task":"2","tz":"UTC","locale":"C","more":null})");
    ASSERT_TRUE(request);
    EXPECT_EQ(*request, (Request{Delete{"2"}, "UTC", "C"}));
}

TEST(Request, SaysNothingOfAPasswordWhereThereIsNone) {
    EXPECT_EQ(encode({SyncNow{}, "UTC", "C"}),
              "{\"command\":\"sync-now\",\"tz\":\"UTC\",\"locale\":\"C\"}\n");
}

TEST(Request, NeverRepeatsAPassword) {
    for (const char* line :
         {R"({"command":"use-sync","place":"off","keep":"","password":{"secret":1},"tz":"","locale":""})",
          R"({"command":"use-sync","place":"off","password":"secret","tz":"","locale":""})",
          R"({"command":"sync-now","password":"secret","tz":""})",
          R"({"command":"sync-now","password":"secret)"}) {
        const std::string complaint = complaintAbout(line);
        EXPECT_NE(complaint, "") << line;
        EXPECT_EQ(complaint.find("secret"), std::string::npos) << complaint;
    }
    EXPECT_EQ(complaintAbout(R"({"command":"sync-now","password":null,"tz":"","locale":""})"),
              "\"password\" is missing or of another type");
}

TEST(Request, IsRefusedWhereItIsNone) {
    const char* const object = "the request is not a JSON object";
    for (const char* line : {"", "\n", "[]", "{", "null", "{}x", "{\"command\":\"add\xFF\"}"})
        EXPECT_EQ(complaintAbout(line), object) << line;
    EXPECT_EQ(complaintAbout("{}"), "\"command\" is missing or of another type");
    EXPECT_EQ(complaintAbout(R"({"command":7,"tz":"","locale":""})"),
              "\"command\" is missing or of another type");
    EXPECT_EQ(complaintAbout(R"({"command":"fly","tz":"","locale":""})"), "unknown command \"fly\"");
    EXPECT_EQ(complaintAbout(R"({"command":"add","tz":"","locale":""})"),
              "\"text\" is missing or of another type");
    EXPECT_EQ(complaintAbout(R"({"command":"edit","task":"1","text":null,"tz":"","locale":""})"),
              "\"text\" is missing or of another type");
    EXPECT_EQ(complaintAbout(R"({"command":"restore","which":-1,"tz":"","locale":""})"),
              "\"which\" is missing or of another type");
    EXPECT_EQ(complaintAbout(R"({"command":"add","text":"x","locale":""})"),
              "\"tz\" is missing or of another type");
    EXPECT_EQ(complaintAbout(R"({"command":"add","text":"x","tz":""})"),
              "\"locale\" is missing or of another type");
    EXPECT_EQ(complaintAbout(std::string(longestRequest + 1, ' ')), "the request is too long");
}

} // namespace
