// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/ChildNamingReport.h"

#include "app/Session.h"
#include "calc/NameTallies.h"
#include "core/FileNames.h"
#include "reports/ReportLabels.h"

#include <array>

namespace tav {

namespace {

// Who a child is named after: a parent, or a parent's parent.
enum class Namesake { FathersFather, MothersFather, Father, MothersMother, FathersMother, Mother };

struct NamingRule {
    const char* text;
    bool son;     // counts sons (SEX "M"), else daughters (SEX "F")
    int ordinal;  // 1st, 2nd or 3rd of them in CHIL order
    Namesake namesake;
};

const std::array<NamingRule, 6> namingRules = {{
    {"1st son named after the father's father", true, 1, Namesake::FathersFather},
    {"2nd son named after the mother's father", true, 2, Namesake::MothersFather},
    {"3rd son named after the father", true, 3, Namesake::Father},
    {"1st daughter named after the mother's mother", false, 1, Namesake::MothersMother},
    {"2nd daughter named after the father's mother", false, 2, Namesake::FathersMother},
    {"3rd daughter named after the mother", false, 3, Namesake::Mother},
}};

// The people around one family whose first given names the rules compare.
struct FamilyNames {
    QString father, mother;
    QString fathersFather, fathersMother, mothersFather, mothersMother;
    std::array<QString, 3> sons, daughters;  // the first three of each, in CHIL order

    const QString& of(Namesake namesake) const
    {
        switch (namesake) {
        case Namesake::FathersFather: return fathersFather;
        case Namesake::MothersFather: return mothersFather;
        case Namesake::Father: return father;
        case Namesake::MothersMother: return mothersMother;
        case Namesake::FathersMother: return fathersMother;
        case Namesake::Mother: break;
        }
        return mother;
    }
};

QString givenName(const RecordStore& records, int32_t slot)
{
    return slot > 0 ? firstGivenName(records.individual(slot).name) : QString();
}

// The first given names of a person's father and mother ("" when unknown).
std::pair<QString, QString> parentNames(const RecordStore& records, int32_t person)
{
    if (person == 0)
        return {};
    const int32_t f = records.childFamilyOf(records.individual(person));
    if (f == 0)
        return {};
    const Family& family = records.family(f);
    return {givenName(records, records.husbandOf(family)),
            givenName(records, records.wifeOf(family))};
}

bool sameName(const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

}  // namespace

QStringList childNamingReport(Session& session)
{
    const RecordStore& records = session.records;
    std::array<int32_t, namingRules.size()> followed{}, known{};
    // Children whose first given name and a parent's are known, and those of
    // them named as the father or the mother is.
    int64_t childrenKnown = 0, childrenAfterParent = 0;
    std::vector<int32_t> followingEvery;
    for (int32_t slot = 1; slot <= records.familyCount(); ++slot) {
        const Family& family = records.family(slot);
        const int32_t husband = records.husbandOf(family), wife = records.wifeOf(family);
        FamilyNames names;
        names.father = givenName(records, husband);
        names.mother = givenName(records, wife);
        std::tie(names.fathersFather, names.fathersMother) = parentNames(records, husband);
        std::tie(names.mothersFather, names.mothersMother) = parentNames(records, wife);
        int sons = 0, daughters = 0;
        for (int k = 1; k <= family.childCount; ++k) {
            const int32_t child = records.childOf(family, k);
            if (child == 0)
                continue;
            const Individual& person = records.individual(child);
            const QString name = firstGivenName(person.name);
            if (person.sex == QLatin1String("M") && sons < 3)
                names.sons[size_t(sons++)] = name;
            else if (person.sex == QLatin1String("F") && daughters < 3)
                names.daughters[size_t(daughters++)] = name;
            if (!name.isEmpty() && (!names.father.isEmpty() || !names.mother.isEmpty())) {
                ++childrenKnown;
                childrenAfterParent += sameName(name, names.father) || sameName(name, names.mother);
            }
        }
        int applying = 0, kept = 0;
        for (size_t r = 0; r < namingRules.size(); ++r) {
            const NamingRule& rule = namingRules[r];
            const QString& child =
                (rule.son ? names.sons : names.daughters)[size_t(rule.ordinal - 1)];
            const QString& namesake = names.of(rule.namesake);
            if (child.isEmpty() || namesake.isEmpty())
                continue;
            ++applying;
            ++known[r];
            if (sameName(child, namesake)) {
                ++kept;
                ++followed[r];
            }
        }
        if (applying > 0 && kept == applying)
            followingEvery.push_back(slot);
    }

    QStringList lines{QStringLiteral("File: ") + shownFileName(records.fileName), QString()};
    for (size_t r = 0; r < namingRules.size(); ++r)
        lines << QLatin1String(namingRules[r].text) + QStringLiteral(": ") +
                     shareText(followed[r], known[r]);
    lines << QString()
          << QStringLiteral("Children who bear a parent's first given name: ") +
                 shareText(childrenAfterParent, childrenKnown)
          << QString()
          << QStringLiteral("Families that follow every rule that applies to them: %1")
                 .arg(followingEvery.size());
    for (const int32_t slot : followingEvery)
        lines << QStringLiteral("  ") + familyLabel(session, slot);
    return lines;
}

}  // namespace tav
