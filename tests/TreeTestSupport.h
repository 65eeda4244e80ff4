// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/TestSupport.h"
#include "tree/TextMeasure.h"
#include "tree/TreeModel.h"
#include "tree/TreeTables.h"

#include <QByteArray>
#include <QHash>
#include <array>
#include <vector>

namespace tav::test {

// Measures text the way a test wants: a width given for a text, else 10
// units a character; the line height is given.
class StubMeasure : public TextMeasure {
public:
    QHash<QString, double> widths;
    double height = 16;

    double textWidth(const QString& text) const override
    {
        return widths.value(text, 10.0 * double(text.size()));
    }
    double lineHeight() const override { return height; }
};

// indIdx, childNo, descendant of each person slot of a view.
using PersonRow = std::array<int32_t, 3>;
using Persons = std::vector<PersonRow>;
// famIdx, head, indSt, nChildren, childShown, spouseNo of each family slot.
using FamilyRow = std::array<int32_t, 6>;
using Families = std::vector<FamilyRow>;

inline Persons personRows(const TreeTables& tree)
{
    Persons rows;
    for (int32_t k = 1; k <= tree.nTreeInd; ++k)
        rows.push_back({tree.person(k).indIdx, tree.person(k).childNo, tree.person(k).descendant});
    return rows;
}

inline Families familyRows(const TreeTables& tree)
{
    Families rows;
    for (int32_t k = 1; k <= tree.nTreeFam; ++k) {
        const TreeFamily& f = tree.family(k);
        rows.push_back({f.famIdx, f.head, f.indSt, f.nChildren, f.childShown, f.spouseNo});
    }
    return rows;
}

// Family k of a family file: husband, wife (individual numbers, 0 for
// none) and children in order.
struct FileFamily {
    int husband = 0;
    int wife = 0;
    std::vector<int> children;
};

// A GEDCOM file of individuals @I1@, @I2@ ... and families @F1@ ...; each
// person's FAMS and FAMC lines follow the families, in family order. A
// person is "NAME" or "NAME:SEX" (an empty NAME writes no NAME line).
inline QByteArray familyFile(const std::vector<QByteArray>& people,
                             const std::vector<FileFamily>& families)
{
    const auto ref = [](char kind, size_t k) {
        return QByteArray("@") + kind + QByteArray::number(qulonglong(k)) + '@';
    };
    QByteArray text = "0 HEAD\n";
    for (size_t i = 1; i <= people.size(); ++i) {
        text += "0 " + ref('I', i) + " INDI\n";
        const QByteArray& person = people[i - 1];
        const qsizetype colon = person.lastIndexOf(':');
        const QByteArray name = colon < 0 ? person : person.left(colon);
        if (!name.isEmpty())
            text += "1 NAME " + name + '\n';
        if (colon >= 0)
            text += "1 SEX " + person.mid(colon + 1) + '\n';
        for (size_t f = 1; f <= families.size(); ++f) {
            const FileFamily& family = families[f - 1];
            if (family.husband == int(i) || family.wife == int(i))
                text += "1 FAMS " + ref('F', f) + '\n';
            for (const int child : family.children) {
                if (child == int(i))
                    text += "1 FAMC " + ref('F', f) + '\n';
            }
        }
    }
    for (size_t f = 1; f <= families.size(); ++f) {
        const FileFamily& family = families[f - 1];
        text += "0 " + ref('F', f) + " FAM\n";
        if (family.husband)
            text += "1 HUSB " + ref('I', size_t(family.husband)) + '\n';
        if (family.wife)
            text += "1 WIFE " + ref('I', size_t(family.wife)) + '\n';
        for (const int child : family.children)
            text += "1 CHIL " + ref('I', size_t(child)) + '\n';
    }
    return text;
}

// A line of `people` generations, each the only child of the one before:
// P1 the father of P2, and so on. `person` ("NAME:SEX"), when given, is
// every one of them instead.
inline QByteArray lineFile(int people, const QByteArray& person = {})
{
    std::vector<QByteArray> names;
    std::vector<FileFamily> families;
    for (int k = 1; k <= people; ++k) {
        names.push_back(person.isEmpty() ? "P" + QByteArray::number(k) : person);
        if (k < people)
            families.push_back({k, 0, {k + 1}});
    }
    return familyFile(names, families);
}

// A session's tree model, measured by a stub.
class TreeModelFixture : public SessionTest {
protected:
    // A new view of an individual, as the tree window starts one.
    void top(int32_t individual)
    {
        model.clearArrays(1, 1);
        model.prepareTopPerson(individual, measure);
    }

    StubMeasure measure;
    TreeModel model{session.records, session.descendantCache, session.settings, session.tree,
                    [this] { return session.today(); }};
};

}  // namespace tav::test
