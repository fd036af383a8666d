/// Screening texts before the patterns run must never change what they mean.
#include "parser/TemporalHint.h"
#include "parser/Where.h"
#include "parser/rules/Families.h"

#include <rapidcheck/gtest.h>

#include <string>
#include <vector>

namespace quillo::parser_tests {
namespace {

/// Sightings that let every pattern run.
Sightings everything() {
    Sightings all;
    for (std::size_t place = 0; place < vocabulary.size(); ++place)
        all.words.insert(place);
    all.digit = true;
    return all;
}

/// Texts of pieces that the patterns know, near misses, and characters with surprises.
rc::Gen<std::u16string> texts() {
    static const std::vector<std::u16string> pieces = [] {
        std::vector<std::u16string> all = {u" ",
                                           u" ",
                                           u" ",
                                           u"\t",
                                           u"\u00A0",
                                           u"1",
                                           u"12",
                                           u"930",
                                           u"1530",
                                           u"31st",
                                           u"3rd",
                                           u"9:30",
                                           u"a",
                                           u"an",
                                           u"p.m.",
                                           u"some",
                                           u"days",
                                           u"minutes",
                                           u"hours",
                                           u"now",
                                           u"on the",
                                           u"by the",
                                           u"next",
                                           u"this",
                                           u"at",
                                           u"in",
                                           u"12/5",
                                           u"\u0663",
                                           u"\u017F",
                                           u"\u212A",
                                           u"\uFB06",
                                           u"\u0301",
                                           u"\u200D",
                                           u"\u0130",
                                           u"x",
                                           u".",
                                           u"Thur\u017Fday",
                                           u"wee\u212A",
                                           u"\U0001F438"};
        for (const std::u16string_view word : vocabulary)
            all.emplace_back(word);
        return all;
    }();
    return rc::gen::map(rc::gen::container<std::vector<std::u16string>>(rc::gen::elementOf(pieces)),
                        [](const std::vector<std::u16string>& chosen) {
                            std::u16string text;
                            for (const std::u16string& piece : chosen)
                                text += text.size() % 3 == 0 ? piece + u" " : piece;
                            return text;
                        });
}

RC_GTEST_PROP(Screening, OfHintsChangesNothing, ()) {
    const std::u16string lowered = unicode::lower(*texts());
    const Sightings seen = look(lowered);
    // The words that are no hints themselves, but let a pattern run.
    Sightings generous = seen;
    generous.words.insert(Words{u"in", u"at", u"am", u"pm", u"the", u"from", u"/"});
    generous.digit = true;
    RC_ASSERT(hasTemporalHint(lowered, seen) == hasTemporalHint(lowered, generous));
}

RC_GTEST_PROP(Screening, OfRulesChangesNothing, ()) {
    const std::u16string text = *texts();
    const Where here;
    const TemporalExtractor extractor(here.calendar, here.format);
    Trace screened;
    Trace plain;
    const auto quick = extractor.extract(text, look(unicode::lower(text)), here.now, &screened);
    const auto slow = extractor.extract(text, everything(), here.now, &plain);
    RC_ASSERT(quick.date == slow.date);
    RC_ASSERT(quick.cleanedTitle == slow.cleanedTitle);
    RC_ASSERT(quick.debug == slow.debug);
    RC_ASSERT(screened.size() == plain.size());
}

TEST(Screening, SeesWordsInsideWordsAndAtTheEnds) {
    EXPECT_TRUE(look(u"maybe").words.intersects(Words{u"may"}));
    EXPECT_TRUE(look(u"xtodayx").words.intersects(Words{u"today"}));
    EXPECT_TRUE(look(u"midnight").words.intersects(Words{u"night"}));
    EXPECT_TRUE(look(u"a thursday").words.intersects(Words{u"hr", u"thursday"}));
    EXPECT_TRUE(look(u"totoday").words.intersects(Words{u"today"}));
    EXPECT_FALSE(look(u"tod ay").words.intersects(Words{u"today"}));
    EXPECT_FALSE(look(u" mon").words.intersects(Words{u" mon "}));
    EXPECT_TRUE(look(u"9").digit);
    EXPECT_FALSE(look(u"nine").digit);
}

TEST(Screening, SeesExactlyTheWordsThatOccur) {
    for (const std::u16string_view word : vocabulary) {
        const std::u16string text = u"zz" + std::u16string(word) + u"zz";
        for (const std::u16string_view other : vocabulary)
            EXPECT_EQ(look(text).words.intersects(Words{other}), text.find(other) != std::u16string::npos)
                << unicode::toUtf8(word) << " / " << unicode::toUtf8(other);
    }
}

TEST(Hint, IsGenerous) {
    for (const char16_t* text :
         {u"ASAP", u"Translate later", u"by xmas or christmas", u"tomorow", u"tmrw", u"knight",
          u"in some weeks", u"3p", u"at 9", u"at 1530", u"12/5", u"until the 3", u"the 3rd",
          u"5 days from now", u"930 pm", u"call a few people", u"decide"})
        EXPECT_TRUE(hasTemporalHint(text)) << unicode::toUtf8(text);
    for (const char16_t* text : {u"Buy milk", u"Mon", u"pick up the 15 reports", u"issue #42", u"3 apples",
                                 u"version 2", u"Schedule a 1:1 meeting", u"Translate the manual", u""})
        EXPECT_FALSE(hasTemporalHint(text)) << unicode::toUtf8(text);
}

} // namespace
} // namespace quillo::parser_tests
