// SPDX-License-Identifier: GPL-3.0-or-later
#include "windowlogic/tree/TreeWindowLogic.h"

#include "reports/HtmlDescendantsReport.h"

#include "app/Session.h"
#include "calc/DescendantCounting.h"
#include "calc/Names.h"
#include "calc/RelationshipFinder.h"
#include "core/DisplayText.h"
#include "core/Fault.h"
#include "core/FileNames.h"
#include "tree/TextMeasure.h"
#include "tree/TreeLabels.h"
#include "tree/TreeLayout.h"
#include "tree/TreeTopChanges.h"
#include "tree/TreeViewFile.h"

#include <QDir>
#include <QFileInfo>
#include <optional>
#include <utility>

namespace tav {

QString treeCommandText(TreeCommand command)
{
    switch (command) {
    case TreeCommand::ShowDescendantsMost: return QStringLiteral("Show descendants (most)");
    case TreeCommand::ShowDescendantsEldest: return QStringLiteral("Show descendants (eldest)");
    case TreeCommand::NextSpouse: return QStringLiteral("Next spouse");
    case TreeCommand::SetTop: return QStringLiteral("Set top");
    case TreeCommand::ShowParents: return QStringLiteral("Show parents");
    case TreeCommand::CountDescendants: return QStringLiteral("Count descendants");
    case TreeCommand::FindRelationship: return QStringLiteral("Find relationship");
    case TreeCommand::ShowInBrowser: return QStringLiteral("Show in browser");
    case TreeCommand::Ancestors: return QStringLiteral("Ancestors");
    case TreeCommand::GoBack: return QStringLiteral("GoBack");
    case TreeCommand::SaveView: return QStringLiteral("Save view");
    case TreeCommand::OpenView: return QStringLiteral("Open view");
    case TreeCommand::TriangleView: return QStringLiteral("Triangle view");
    case TreeCommand::HtmlReport: return QStringLiteral("HTML report");
    }
    return QString();
}

QString treeOptionText(TreeOption option)
{
    switch (option) {
    case TreeOption::Dates: return QStringLiteral("Show dates");
    case TreeOption::Surnames: return QStringLiteral("Show surnames");
    case TreeOption::DescendantMark: return QStringLiteral("Mark people with descendants");
    case TreeOption::MainLine: return QStringLiteral("Show the main line");
    case TreeOption::NoSpouse: return QStringLiteral("Leave out spouses");
    case TreeOption::BackColour: return QStringLiteral("Alternative background colour");
    }
    return QString();
}

QString treeFontSizeText(int fontSize)
{
    switch (fontSize) {
    case 1: return QStringLiteral("Small (6 point)");
    case 3: return QStringLiteral("Medium (9.75 point)");
    case 4: return QStringLiteral("Large (12 point)");
    default: return QStringLiteral("Normal (8.25 point)");
    }
}

bool& treeOptionIn(Settings& settings, TreeOption option)
{
    switch (option) {
    case TreeOption::Dates: return settings.ViewDates;
    case TreeOption::Surnames: return settings.ViewSurnames;
    case TreeOption::DescendantMark: return settings.ViewDescendentMark;
    case TreeOption::MainLine: return settings.ViewMainLine;
    case TreeOption::NoSpouse: return settings.ViewNoSpouse;
    case TreeOption::BackColour: return settings.BackColour;
    }
    return settings.ViewDates;
}

namespace {

// Individuals with a spouse family that the file's links reach.
int resolvedSpouseFamilies(const RecordStore& records, int32_t individual)
{
    const Individual& person = records.individual(individual);
    int found = 0;
    for (int k = 1; k <= person.spouseFamilyCount; ++k)
        found += records.spouseFamilyOf(person, k) != 0 ? 1 : 0;
    return found;
}

}  // namespace

TreeWindowLogic::TreeWindowLogic(Session& session, TreeMeasureMaker makeMeasure)
    : session_(session), makeMeasure_(std::move(makeMeasure)),
      measure_(makeMeasure_(session.settings.FontSize)),
      model_(session.records, session.descendantCache, session.settings, session.tree,
             [&session] { return session.today(); }),
      madeWith_(labelSettings())
{
    session_.tree.prevViewSaved = false;
}

TreeWindowLogic::~TreeWindowLogic() = default;

bool TreeWindowLogic::activate()
{
    if (session_.tree.treeBuilt)
        return false;
    session_.tree.treeBuilt = true;
    triangleShown_ = false;
    if (!(madeWith_ == labelSettings()))
        refreshLabels();  // the view kept for GoBack follows the settings too
    // The top person first, then the walk: a walk that fails leaves the
    // top person alone on screen. A view already shown can be gone back to.
    const bool hadView = model_.nTreeInd >= 1;
    const int32_t top = session_.curInd;
    session_.guarded([&] {
        model_.changeView([&] {
            if (hadView)
                model_.treeSavePrev();
            model_.clearArrays(1, 1);
            model_.nTreeInd = 1;
            model_.nTreeFam = 0;
            model_.prepareTopPerson(top, *measure_);
            model_.selInd = 1;
        });
    });
    session_.guarded([&] {
        model_.changeView([&] {
            model_.prepareDescendents3(1, 0, 0);
            layout();
        });
    });
    redraw();
    return true;
}

int32_t TreeWindowLogic::individualAt(int32_t slot) const
{
    return slot >= 1 && slot <= model_.nTreeInd ? model_.person(slot).indIdx : 0;
}

bool TreeWindowLogic::isDescendantSlot(int32_t slot) const
{
    if (slot < 1 || slot > model_.nTreeInd)
        return false;
    return treeBoxRoles(model_)[size_t(slot)] != TreeBoxRole::Spouse;
}

TreeWindowLogic::LinePlace TreeWindowLogic::linePlace(int32_t slot) const
{
    for (int32_t f = 1; f <= model_.nTreeFam; ++f) {
        const TreeFamily& family = model_.family(f);
        if (slot > family.indSt && slot <= family.indSt + family.nChildren)
            return {f, slot - family.indSt};
    }
    return {};
}

int32_t TreeWindowLogic::familyHeadedBy(int32_t slot) const
{
    for (int32_t f = 1; f <= model_.nTreeFam; ++f) {
        if (model_.family(f).head == slot)
            return f;
    }
    return 0;
}

int32_t TreeWindowLogic::nextSpouseNumber(int32_t slot) const
{
    const RecordStore& records = session_.records;
    const Individual& person = records.individual(individualAt(slot));
    const int count = person.spouseFamilyCount;
    const int32_t headed = familyHeadedBy(slot);
    int32_t next = headed != 0 ? model_.family(headed).spouseNo : 0;
    // The next family after the one shown, round to the first again; a
    // link to no family is passed over.
    for (int tries = 0; tries < count; ++tries) {
        next = next % count + 1;
        if (records.spouseFamilyOf(person, next) != 0)
            break;
    }
    return next;
}

QString TreeWindowLogic::caption() const
{
    const int32_t top = individualAt(1);
    return QStringLiteral("Family tree - ") +
           shortenedText(formatName(session_.records.individual(top).name,
                                    NameSurname | NameGivenAsWritten, session_.nameStyle()));
}

QString TreeWindowLogic::statusText() const
{
    const int32_t slot = model_.selInd;
    if (slot < 1 || slot > model_.nTreeInd)
        return QString();
    const int32_t individual = individualAt(slot);
    if (individual == 0)
        return QStringLiteral("? (no spouse in the file for this family)");
    return QStringLiteral("%1 (%2)")
        .arg(shortenedText(listName(session_.records, individual, session_.nameStyle())))
        .arg(individual);
}

QString TreeWindowLogic::toolTip(int32_t slot) const
{
    if (slot < 1 || slot > model_.nTreeInd)
        return QString();
    const int32_t individual = individualAt(slot);
    if (individual == 0)
        return QStringLiteral("The file names no spouse in this family");
    QStringList lines{listName(session_.records, individual, session_.nameStyle())};
    const QString years = personYears(session_.records, individual, session_.today());
    if (!years.isEmpty())
        lines << years;
    lines << QStringLiteral("Individual %1").arg(individual);
    try {
        lines << QStringLiteral("Descendants: %1")
                     .arg(countDescendants(session_.records, session_.descendantCache, individual));
    } catch (const RuntimeFault&) {
        lines << QStringLiteral("Descendants: a line deeper than 100 generations");
    }
    return lines.join(QLatin1Char('\n'));
}

void TreeWindowLogic::select(int32_t slot)
{
    if (slot == model_.selInd || !drawing_.box(slot))
        return;
    model_.selInd = slot;
    redraw();
}

bool TreeWindowLogic::move(TreeMove move)
{
    const TreeBox* current = drawing_.box(model_.selInd);
    if (!current) {
        if (drawing_.boxes.empty())
            return false;
        select(drawing_.boxes.front().slot);
        return true;
    }
    int32_t target = 0;
    switch (move) {
    case TreeMove::Left:
    case TreeMove::Right: {
        const bool right = move == TreeMove::Right;
        double best = 0;
        for (const TreeBox& box : drawing_.boxes) {
            if (box.text.top() != current->text.top() || box.slot == current->slot)
                continue;
            const double distance = right ? box.text.left() - current->text.left()
                                          : current->text.left() - box.text.left();
            if (distance > 0 && (target == 0 || distance < best)) {
                best = distance;
                target = box.slot;
            }
        }
        break;
    }
    case TreeMove::Up: {
        const LinePlace place = linePlace(current->slot);
        if (place.family != 0)
            target = model_.family(place.family).head;
        for (int32_t f = 1; target == 0 && f <= model_.nTreeFam; ++f) {
            if (model_.family(f).indSt == current->slot)
                target = model_.family(f).head;
        }
        break;
    }
    case TreeMove::Down: {
        int32_t f = current->role == TreeBoxRole::Spouse ? 0 : familyHeadedBy(current->slot);
        for (int32_t g = 1; f == 0 && g <= model_.nTreeFam; ++g) {
            if (model_.family(g).indSt == current->slot)
                f = g;
        }
        if (f == 0)
            break;
        const TreeFamily& family = model_.family(f);
        if (family.childShown >= 1 && family.childShown <= family.nChildren)
            target = family.indSt + family.childShown;
        else if (current->slot != family.indSt)
            target = family.indSt;  // no line child: the spouse, when shown
        break;
    }
    }
    if (target == 0 || !drawing_.box(target))
        return false;
    select(target);
    return true;
}

bool TreeWindowLogic::enabled(TreeCommand command) const
{
    const int32_t slot = model_.selInd;
    const int32_t individual = individualAt(slot);
    const RecordStore& records = session_.records;
    switch (command) {
    case TreeCommand::ShowDescendantsMost:
        if (individual == 0 || !isDescendantSlot(slot))
            return false;
        try {
            return largestFamilySlot(records, session_.descendantCache, individual) != 0;
        } catch (const RuntimeFault&) {
            return true;  // the walk will say why it cannot go on
        }
    case TreeCommand::ShowDescendantsEldest:
        return individual != 0 && isDescendantSlot(slot) &&
               records.spouseFamilyOf(records.individual(individual), 1) != 0;
    case TreeCommand::NextSpouse:
        return individual != 0 && isDescendantSlot(slot) &&
               resolvedSpouseFamilies(records, individual) >= 2;
    case TreeCommand::SetTop: return individual != 0 && slot != 1;
    case TreeCommand::ShowParents:
        return isDescendantSlot(slot) && parentsFamilyOf(records, individual) != 0;
    case TreeCommand::CountDescendants:
    case TreeCommand::FindRelationship:
    case TreeCommand::ShowInBrowser:
    case TreeCommand::Ancestors: return individual != 0;
    case TreeCommand::GoBack: return session_.tree.prevViewSaved;
    case TreeCommand::SaveView: return model_.nTreeInd >= 1;
    case TreeCommand::OpenView: return QFileInfo::exists(treeViewFileName());
    case TreeCommand::TriangleView: return triangleShown_ || individual != 0;
    case TreeCommand::HtmlReport: return model_.nTreeInd >= 1 && individualAt(1) != 0;
    }
    return false;
}

bool TreeWindowLogic::checked(TreeCommand command) const
{
    if (command == TreeCommand::FindRelationship)
        return relationshipPicked_;
    if (command == TreeCommand::TriangleView)
        return triangleShown_;
    return false;
}

QString TreeWindowLogic::text(TreeCommand command) const
{
    if (command == TreeCommand::FindRelationship && relationshipPicked_)
        return QStringLiteral("Find relationship (%1)").arg(relationshipFirst_);
    return treeCommandText(command);
}

void TreeWindowLogic::run(TreeCommand command)
{
    if (!enabled(command))
        return;
    const int32_t slot = model_.selInd;
    switch (command) {
    case TreeCommand::ShowDescendantsMost: walkFrom(slot, true, 0); break;
    case TreeCommand::ShowDescendantsEldest: walkFrom(slot, false, 1); break;
    case TreeCommand::NextSpouse: walkFrom(slot, true, nextSpouseNumber(slot)); break;
    case TreeCommand::SetTop:
        changeView([&] {
            setTopPerson(model_, slot, *measure_);
            return 1;
        });
        break;
    case TreeCommand::ShowParents:
        changeView([&] { return showParents(model_, slot, *measure_, session_.today()); });
        break;
    case TreeCommand::CountDescendants: countDescendantsOfSelected(); break;
    case TreeCommand::FindRelationship: findRelationship(); break;
    case TreeCommand::ShowInBrowser:
        session_.openBrowser(ViewKind::Individual, individualAt(slot), BrowserCaller::MainWindow);
        session_.notifyChanged();
        break;
    case TreeCommand::Ancestors:
        session_.curInd = individualAt(slot);
        session_.showWindow(AppWindow::Ancestors);
        break;
    case TreeCommand::GoBack: goBack(); break;
    case TreeCommand::SaveView: saveView(); break;
    case TreeCommand::OpenView: openView(); break;
    case TreeCommand::TriangleView: toggleTriangle(); break;
    case TreeCommand::HtmlReport: writeHtmlReport(); break;
    }
}

TreeDrawing TreeWindowLogic::outputDrawing() const
{
    return treeDrawing(model_, session_.records, session_.settings, 0);
}

void TreeWindowLogic::writeHtmlReport()
{
    // Counting a large descendancy may fault: a message, as for the tree.
    std::optional<Result<QString>> made;
    session_.guarded([&] { made = writeHtmlDescendantsReport(session_, individualAt(1)); });
    if (!made)
        return;
    const Result<QString>& written = *made;
    if (!written) {
        session_.messages().warning(written.message());
        return;
    }
    notice_ = QStringLiteral("Report written to %1")
                  .arg(QDir::toNativeSeparators(shownFileName(*written)));
    reportToOpen_ = *written;
}

QString TreeWindowLogic::takeReportToOpen() { return std::exchange(reportToOpen_, QString()); }

void TreeWindowLogic::changeView(const std::function<int32_t()>& change)
{
    triangleShown_ = false;
    session_.guarded([&] {
        model_.changeView([&] {
            model_.treeSavePrev();
            const int32_t selected = change();
            layout();
            model_.selInd = selected;
        });
    });
    redraw();
}

void TreeWindowLogic::walkFrom(int32_t slot, bool mostDescendants, int32_t spouseNo)
{
    changeView([&] {
        const LinePlace place = linePlace(slot);
        if (place.family != 0)
            model_.family(place.family).childShown = place.child;
        const int32_t start = place.family != 0 ? slot : 1;
        if (mostDescendants)
            model_.prepareDescendents3(start, place.family, spouseNo);
        else
            model_.prepareDescendents(start, place.family, spouseNo);
        return slot;
    });
}

void TreeWindowLogic::goBack()
{
    triangleShown_ = false;
    model_.treeGetPrev();
    // One level only: what was kept has been given back.
    session_.tree.prevViewSaved = false;
    if (model_.selInd < 1 || model_.selInd > model_.nTreeInd)
        model_.selInd = 1;
    redraw();
}

void TreeWindowLogic::saveView() { writeView(absoluteFileName(treeViewFileName())); }

void TreeWindowLogic::openView() { readView(absoluteFileName(treeViewFileName())); }

bool TreeWindowLogic::writeView(const QString& path)
{
    const Outcome saved = treeSaveToFile(model_, path);
    if (saved)
        notice_ =
            QStringLiteral("View saved in %1").arg(QDir::toNativeSeparators(shownFileName(path)));
    else
        session_.messages().warning(saved.message());
    return bool(saved);
}

void TreeWindowLogic::readView(const QString& path)
{
    session_.guarded([&] {
        SavedView view = treeReadFromFile(model_, path);
        if (!view.sameGedcomFile && !session_.messages().ask(view.otherFileQuestion()))
            return;
        showSavedView(model_, std::move(view));
        triangleShown_ = false;
        model_.selInd = 1;
        notice_ = QStringLiteral("View opened from %1")
                      .arg(QDir::toNativeSeparators(shownFileName(path)));
    });
    redraw();
}

void TreeWindowLogic::saveViewAs(const QString& path)
{
    if (writeView(path))
        session_.settings.viewFolder = QFileInfo(path).absolutePath();
}

void TreeWindowLogic::openViewFrom(const QString& path)
{
    session_.settings.viewFolder = QFileInfo(path).absolutePath();
    readView(path);
}

QString TreeWindowLogic::suggestedViewName() const
{
    const int32_t top = individualAt(1);
    const QString name = formatName(session_.records.individual(top).name,
                                    NameSurname | NameGivenAsWritten, session_.nameStyle());
    return fileNameFrom(name + QStringLiteral(" tree"), QStringLiteral("tree view")) +
           QStringLiteral(".gds");
}

QString TreeWindowLogic::viewFolder() const
{
    const QString& folder = session_.settings.viewFolder;
    return fileKindOf(folder) == FileKind::Folder ? folder : QDir::currentPath();
}

void TreeWindowLogic::countDescendantsOfSelected()
{
    const int32_t individual = individualAt(model_.selInd);
    session_.guarded([&] {
        const RecordStore& records = session_.records;
        DescendantCache& cache = session_.descendantCache;
        const QString text =
            QStringLiteral("Descendants: %1").arg(countDescendants(records, cache, individual)) +
            session_.lineSeparator +
            QStringLiteral("Spouses: %1").arg(countDescendantSpouses(records, cache, individual)) +
            session_.lineSeparator +
            QStringLiteral("Generations: %1").arg(countGenerations(records, cache, individual));
        session_.messages().message(text, treeCommandText(TreeCommand::CountDescendants));
    });
}

void TreeWindowLogic::findRelationship()
{
    const int32_t individual = individualAt(model_.selInd);
    if (!relationshipPicked_) {
        relationshipPicked_ = true;
        relationshipFirst_ = individual;
        return;
    }
    relationshipPicked_ = false;
    // The person picked second is worded against the one picked first.
    session_.guarded([&] {
        session_.showReport(relationshipText(session_.records, individual, relationshipFirst_,
                                             session_.lineSeparator),
                            treeCommandText(TreeCommand::FindRelationship));
    });
}

void TreeWindowLogic::toggleTriangle()
{
    if (triangleShown_) {
        triangleShown_ = false;
        return;
    }
    triangle_ =
        descendantTriangle(session_.records, session_.descendantCache, individualAt(model_.selInd));
    triangleShown_ = true;
}

QString TreeWindowLogic::triangleLabel() const
{
    const int32_t individual = triangle_.individual;
    const QString name =
        shortenedText(listName(session_.records, individual, session_.nameStyle()));
    const QString years = personYears(session_.records, individual, session_.today());
    return years.isEmpty() ? name : name + QLatin1Char(' ') + years;
}

QString TreeWindowLogic::takeNotice() { return std::exchange(notice_, QString()); }

int TreeWindowLogic::fontSize() const { return session_.settings.FontSize; }

void TreeWindowLogic::setFontSize(int fontSize)
{
    if (fontSize < 1 || fontSize > 4 || fontSize == session_.settings.FontSize)
        return;
    session_.settings.FontSize = fontSize;
    settingsChanged();
}

bool TreeWindowLogic::option(TreeOption option) const
{
    return treeOptionIn(session_.settings, option);
}

void TreeWindowLogic::setOption(TreeOption option, bool on)
{
    treeOptionIn(session_.settings, option) = on;
    settingsChanged();
}

void TreeWindowLogic::settingsChanged()
{
    if (!(madeWith_ == labelSettings()))
        refreshLabels();
    redraw();
    // A spouse that is no longer shown hands the selection to its head.
    for (int32_t f = 1; !drawing_.box(model_.selInd) && f <= model_.nTreeFam; ++f) {
        if (model_.family(f).indSt == model_.selInd) {
            model_.selInd = model_.family(f).head;
            redraw();
        }
    }
}

TreeWindowLogic::LabelSettings TreeWindowLogic::labelSettings() const
{
    const Settings& s = session_.settings;
    return {s.SurnameStyle, s.SurnamePosn, s.FontSize, s.ViewDates, s.ViewSurnames};
}

void TreeWindowLogic::layout()
{
    layoutManager(model_, *measure_, generationGap(session_.settings.FontSize));
}

void TreeWindowLogic::relabel(TreeTables& tables) const
{
    const std::vector<TreeBoxRole> roles = treeBoxRoles(tables);
    const QDate today = session_.today();
    for (int32_t slot = 1; slot <= tables.nTreeInd; ++slot) {
        TreePerson& person = tables.person(slot);
        person.label =
            treeLabel(session_.records, person.indIdx,
                      roles[size_t(slot)] == TreeBoxRole::Child ? TreeLabelRole::Child
                                                                : TreeLabelRole::TopOrSpouse,
                      session_.settings, today);
    }
    layoutManager(tables, *measure_, generationGap(session_.settings.FontSize));
}

void TreeWindowLogic::refreshLabels()
{
    if (madeWith_.fontSize != session_.settings.FontSize)
        measure_ = makeMeasure_(session_.settings.FontSize);
    madeWith_ = labelSettings();
    session_.guarded([&] {
        TreeTables view = model_;
        relabel(view);
        TreeTables kept;
        kept.treeInd = model_.prevInd;
        kept.treeFam = model_.prevFam;
        kept.nTreeInd = model_.nPrevInd;
        kept.nTreeFam = model_.nPrevFam;
        if (kept.nTreeInd >= 1)
            relabel(kept);
        model_.treeInd = std::move(view.treeInd);
        model_.treeFam = std::move(view.treeFam);
        model_.prevInd = std::move(kept.treeInd);
        model_.prevFam = std::move(kept.treeFam);
    });
}

void TreeWindowLogic::redraw()
{
    drawing_ = treeDrawing(model_, session_.records, session_.settings, model_.selInd);
}

}  // namespace tav
