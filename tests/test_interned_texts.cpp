// SPDX-License-Identifier: GPL-3.0-or-later
// Cross-references as codes: the same text always gives the same code,
// whichever of the two tables it went to, and different texts never share
// one.
#include "core/InternedTexts.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

using tav::InternedTexts;

namespace {

// Interns every text and checks each against the codes given before:
// found again, the same code; new, a new one; and its bytes kept.
class Checked {
public:
    int32_t intern(const std::string& text)
    {
        const int32_t code = texts_.intern(text);
        const auto [known, added] = codes_.emplace(text, code);
        EXPECT_EQ(known->second, code) << text;
        if (added) {
            EXPECT_EQ(code, int32_t(codes_.size()) - 1) << text << " is new";
        }
        EXPECT_EQ(texts_.bytes(code), text);
        return code;
    }
    void expectAllFound() const
    {
        for (const auto& [text, code] : codes_)
            EXPECT_EQ(texts_.find(text), code) << text;
        EXPECT_EQ(texts_.count(), int32_t(codes_.size()));
    }

    InternedTexts texts_;
    std::map<std::string, int32_t> codes_;
};

}  // namespace

TEST(InternedTextsTest, NumberedAndOtherTextsKeepOneCodeEach)
{
    Checked c;
    for (int i = 1; i <= 3000; ++i) {
        c.intern("I" + std::to_string(i));
        c.intern("F" + std::to_string(3001 - i));
    }
    for (const char* text :
         {"I012", "I0", "I00", "3I", "181U", "F1a", "I1a2", "PERSON_A", "Abraham_Simpson", "FATHER",
          "", "VOID", "@", "I 1", "averylongcrossreferencetext1", "averylongcrossreferencetext2"})
        c.intern(text);
    for (int i = 3000; i >= 1; i -= 7)
        c.intern("I" + std::to_string(i));
    c.intern(std::string("I1\0", 3));
    c.intern(std::string(1, '\0') + "1");
    c.expectAllFound();
    EXPECT_NE(c.texts_.find("I012"), c.texts_.find("I12")) << "the text counts, not its number";
    EXPECT_EQ(c.texts_.find("I3001"), InternedTexts::none);
    EXPECT_EQ(c.texts_.find("G1"), InternedTexts::none);
    EXPECT_EQ(c.texts_.find("PERSON_B"), InternedTexts::none);
}

// Numbers far apart go to the hash table; when later numbers bring their
// table near them, they keep the code they had.
TEST(InternedTextsTest, NumbersFarApartKeepTheirCodeWhenTheTableReachesThem)
{
    Checked c;
    c.intern("I1");
    c.intern("I152733931767");
    c.intern("I400000");  // too far from one text
    c.intern("I999999999999999");
    c.intern("I1000000000000000");  // sixteen digits: no number at all
    for (int i = 2; i <= 30000; ++i)
        c.intern("I" + std::to_string(i));
    c.intern("I400000");  // now within reach, and the same code
    c.intern("I399999");
    c.intern("I152733931767");
    // Below the first number, the table grows at its front.
    for (int i = 5000; i >= 0; --i)
        c.intern("F" + std::to_string(i));
    c.expectAllFound();

    c.texts_.clear();
    EXPECT_EQ(c.texts_.count(), 0);
    EXPECT_EQ(c.texts_.find("I1"), InternedTexts::none);
    EXPECT_EQ(c.texts_.intern("I400000"), 0);
}
