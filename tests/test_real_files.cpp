// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/TestSupport.h"

#include "app/GedcomLoading.h"

#include <QFile>

using namespace tav;

namespace {

struct Counts {
    int individuals = 0, families = 0, sources = 0, notes = 0;
};

// Counts level-0 records the way grep would: the lines "0 @XREF@ TAG" by
// their tag.
Counts grepCounts(const QString& path)
{
    QFile file(path);
    Counts c;
    if (!file.open(QIODevice::ReadOnly))
        return c;
    QByteArray all = file.readAll();
    if (all.startsWith("\xEF\xBB\xBF"))
        all.remove(0, 3);
    for (QByteArray line : all.split('\n')) {
        if (!line.startsWith("0 @"))
            continue;
        line = line.trimmed();
        const QByteArray tag = line.mid(line.indexOf('@', 3) + 2);
        if (tag == "INDI")
            ++c.individuals;
        else if (tag == "FAM")
            ++c.families;
        else if (tag == "NOTE" || tag.startsWith("NOTE "))
            ++c.notes;
        else if (tag == "SOUR")
            ++c.sources;
    }
    return c;
}

struct RealFile {
    const char* name;
    int individuals;  // as the files' own index lists them
    int families;
    const char16_t* someName;        // a NAME value as it must decode
    const char16_t* someBirthPlace;  // a non-ASCII place where no such name survives, or null
    const char* characterSet;
};

const RealFile realFiles[] = {
    // These four files hold no byte above 127 at all.
    {"royal92.ged", 3010, 1422, u"Victoria  /Hanover/", nullptr, "ANSEL"},
    {"kennedy.ged", 208, 75, u"John Fitzgerald /KENNEDY/", nullptr, "UTF-8"},
    {"shakespeare.ged", 31, 11, u"William /Shakespeare/", nullptr, "UTF-8"},
    {"harry_potter.ged", 114, 42, u"Harry /Potter/", nullptr, "ANSI"},
    {"hawaiian_kings.ged", 110, 58, u"/Kekaulike/", nullptr, "IBMPC"},
    {"bourbon.ged", 303, 139, u"Marie-Thérèse /HABSBOURG/", nullptr, "UTF-8"},
    // Its one non-ASCII NAME (Zelníčková) is followed by a second NAME line of
    // the same person, kept as her other name.
    {"pres2020.ged", 2322, 1115, u"Ivana /Zelníčková/",
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
    const Counts expected = grepCounts(path);
    EXPECT_EQ(r.individualCount(), expected.individuals);
    EXPECT_EQ(r.individualCount(), real.individuals);
    EXPECT_EQ(r.familyCount(), expected.families);
    EXPECT_EQ(r.familyCount(), real.families);
    EXPECT_EQ(r.sourceCount(), expected.sources);
    EXPECT_EQ(r.noteCount(), expected.notes);
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

TEST_F(RealFileTest, HeaderValuesAndTheSubmitterOfRoyal92AreRead)
{
    TAV_REQUIRE_SHARED_FILE(royal, "royal92.ged");
    ASSERT_TRUE(loadGedcom(session, royal));
    EXPECT_EQ(session.records.characterSet, QStringLiteral("ANSEL"));
    EXPECT_EQ(session.records.headerDate, QStringLiteral("20 NOV 1992"));
    EXPECT_TRUE(session.records.gedcomVersion.isEmpty());
    // The submitter record @S1@ is no source, though its id looks like one.
    EXPECT_EQ(session.records.sourceCount(), 0);
}
