// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/TestSupport.h"

#include "app/GedcomLoading.h"

using namespace tav;

namespace {

struct RealFile {
    const char* name;
    // The level-0 records as the files' own index lists individuals and
    // families, and as grep finds the lines "0 @XREF@ SOUR" and "0 @XREF@ NOTE".
    int individuals, families, sources, notes;
    const char16_t* someName;        // a NAME value as it must decode
    const char16_t* someBirthPlace;  // a non-ASCII place where no such name survives, or null
    const char* characterSet;
};

const RealFile realFiles[] = {
    // These four files hold no byte above 127 at all.
    {"royal92.ged", 3010, 1422, 0, 0, u"Victoria  /Hanover/", nullptr, "ANSEL"},
    {"kennedy.ged", 208, 75, 78, 0, u"John Fitzgerald /KENNEDY/", nullptr, "UTF-8"},
    {"shakespeare.ged", 31, 11, 0, 0, u"William /Shakespeare/", nullptr, "UTF-8"},
    {"harry_potter.ged", 114, 42, 0, 0, u"Harry /Potter/", nullptr, "ANSI"},
    {"hawaiian_kings.ged", 110, 58, 173, 0, u"/Kekaulike/", nullptr, "IBMPC"},
    {"bourbon.ged", 303, 139, 6, 5, u"Marie-Thérèse /HABSBOURG/", nullptr, "UTF-8"},
    // Its one non-ASCII NAME (Zelníčková) is followed by a second NAME line of
    // the same person, kept as her other name.
    {"pres2020.ged", 2322, 1115, 91, 141, u"Ivana /Zelníčková/",
     u"Saint-Martin-de-Ré, Departement de la Charente-Maritime, Poitou-Charentes, France", "UTF-8"},
};

void PrintTo(const RealFile& file, std::ostream* os) { *os << file.name; }

}  // namespace

class RealFileTest : public tav::test::SessionTest,
                     public ::testing::WithParamInterface<RealFile> {};

TEST_P(RealFileTest, LoadsWithTheFileCountsNamesAndNoFaults)
{
    const RealFile& real = GetParam();
    TAV_REQUIRE_SHARED_FILE(path, real.name);
    ASSERT_TRUE(loadGedcom(session, path));
    const RecordStore& r = session.records;
    EXPECT_EQ(r.individualCount(), real.individuals);
    EXPECT_EQ(r.familyCount(), real.families);
    EXPECT_EQ(r.sourceCount(), real.sources);
    EXPECT_EQ(r.noteCount(), real.notes);
    EXPECT_TRUE(messages.entries.empty()) << messages.texts().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(r.characterSet, QString::fromLatin1(real.characterSet));

    const QString wantedName = QString::fromUtf16(real.someName);
    const QString wantedPlace =
        real.someBirthPlace ? QString::fromUtf16(real.someBirthPlace) : QString();
    bool nameFound = false;
    bool placeFound = wantedPlace.isEmpty();
    for (int32_t i = 1; i <= r.individualCount(); ++i) {
        nameFound = nameFound || r.individual(i).name == wantedName;
        placeFound = placeFound || r.individual(i).birthPlace == wantedPlace;
    }
    EXPECT_TRUE(nameFound) << "no individual named " << wantedName.toStdString();
    EXPECT_TRUE(placeFound) << "no birth place " << wantedPlace.toStdString();

    // Every resolved link points at a record that carries the linked
    // cross-reference, and every unresolved one names none.
    for (int32_t i = 1; i <= r.individualCount(); ++i) {
        const Individual& p = r.individual(i);
        const auto check = [&](const Link& link) {
            if (link.slot) {
                ASSERT_EQ(r.family(link.slot).xref, link.xref);
            } else if (link.written()) {
                ASSERT_EQ(r.famIndexFromId(r.xrefText(link.xref)), 0);
            }
        };
        check(p.childFamily);
        for (int k = 1; k <= p.spouseFamilyCount; ++k)
            check(r.spouseFamilyLink(p, k));
    }
}

INSTANTIATE_TEST_SUITE_P(SharedFiles, RealFileTest, ::testing::ValuesIn(realFiles),
                         [](const ::testing::TestParamInfo<RealFile>& info) {
                             std::string name = info.param.name;
                             return name.substr(0, name.find('.'));
                         });
