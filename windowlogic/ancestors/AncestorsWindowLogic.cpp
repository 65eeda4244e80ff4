// SPDX-License-Identifier: GPL-3.0-or-later
#include "windowlogic/ancestors/AncestorsWindowLogic.h"

#include "app/Session.h"
#include "calc/Names.h"
#include "core/DisplayText.h"
#include "reports/HtmlAncestorsReport.h"
#include "tree/AncestorsChart.h"
#include "tree/TextMeasure.h"

#include <QDir>
#include <QStringList>
#include <algorithm>
#include <optional>
#include <utility>

namespace tav {

QString ancestorsCommandText(AncestorsCommand command)
{
    switch (command) {
    case AncestorsCommand::SetRoot: return QStringLiteral("Set root");
    case AncestorsCommand::Back: return QStringLiteral("Back");
    case AncestorsCommand::Descendants: return QStringLiteral("Descendants");
    case AncestorsCommand::ShowInBrowser: return QStringLiteral("Show in browser");
    case AncestorsCommand::HtmlReport: return QStringLiteral("HTML report");
    }
    return QString();
}

QString ancestorRelation(int32_t number)
{
    if (number < 2)
        return QString();
    QStringList steps;
    for (int bit = Ahnentafel::generationOf(number) - 2; bit >= 0; --bit)
        steps << ((number >> bit) & 1 ? QStringLiteral("mother") : QStringLiteral("father"));
    return steps.join(QStringLiteral("'s "));
}

AncestorsWindowLogic::AncestorsWindowLogic(Session& session, AncestorsMeasureMaker makeMeasure)
    : session_(session), makeMeasure_(std::move(makeMeasure)),
      measure_(makeMeasure_(session.settings.FontSize)), madeWith_(lookSettings())
{}

AncestorsWindowLogic::~AncestorsWindowLogic() = default;

void AncestorsWindowLogic::activate()
{
    const int32_t root = session_.curInd;
    if (root < 1 || root > session_.records.individualCount())
        return;
    if (root == chart_.root())
        return;
    if (chart_.root() != 0)
        history_.push_back({chart_.root(), selected_});
    showRoot(root, 1);
}

void AncestorsWindowLogic::showRoot(int32_t root, int32_t selected)
{
    const int generations = std::clamp(session_.settings.ancestorGenerations,
                                       Ahnentafel::minGenerations, Ahnentafel::maxGenerations);
    chart_ = Ahnentafel(session_.records, root, generations);
    selected_ = selected;
    rebuild();
}

void AncestorsWindowLogic::rebuild()
{
    if (madeWith_.fontSize != session_.settings.FontSize)
        measure_ = makeMeasure_(session_.settings.FontSize);
    madeWith_ = lookSettings();
    drawing_ =
        ancestorsDrawing(chart_, session_.records, session_.settings, *measure_, session_.today());
    // A place beyond the chart hands the selection to its child in the
    // last generation shown.
    while (selected_ > 1 && !drawing_.box(selected_))
        selected_ /= 2;
    if (!drawing_.box(selected_))
        selected_ = drawing_.boxes.empty() ? 0 : drawing_.boxes.front().slot;
    selectAncestorBox(drawing_, selected_);
}

TreeDrawing AncestorsWindowLogic::outputDrawing() const
{
    TreeDrawing drawing = drawing_;
    selectAncestorBox(drawing, 0);
    return drawing;
}

QString AncestorsWindowLogic::caption() const
{
    const int32_t root = chart_.root();
    if (root == 0)
        return QStringLiteral("Ancestors");
    return QStringLiteral("Ancestors - ") +
           shortenedText(formatName(session_.records.individual(root).name,
                                    NameSurname | NameGivenAsWritten, session_.nameStyle()));
}

QString AncestorsWindowLogic::statusText() const
{
    const int32_t individual = selectedIndividual();
    if (individual == 0)
        return QString();
    QString text = QStringLiteral("%1 (%2) - number %3")
                       .arg(shortenedText(
                           listName(session_.records, individual, session_.nameStyle())))
                       .arg(individual)
                       .arg(selected_);
    if (selected_ > 1)
        text += QStringLiteral(", ") + ancestorRelation(selected_);
    return text;
}

QString AncestorsWindowLogic::toolTip(int32_t number) const
{
    const int32_t individual = chart_.individualAt(number);
    if (individual == 0)
        return QString();
    QStringList lines{listName(session_.records, individual, session_.nameStyle())};
    const QString years = personYears(session_.records, individual, session_.today());
    if (!years.isEmpty())
        lines << years;
    lines << QStringLiteral("Individual %1").arg(individual);
    QString place = QStringLiteral("Number %1").arg(number);
    if (number > 1)
        place += QStringLiteral(": ") + ancestorRelation(number);
    lines << place;
    if (const int32_t first = chart_.firstNumberOf(number); first != 0)
        lines << QStringLiteral("Also number %1, where the forebears go on").arg(first);
    return lines.join(QLatin1Char('\n'));
}

int32_t AncestorsWindowLogic::numberAt(QPointF point) const
{
    if (const int32_t number = drawing_.slotAt(point); number != 0)
        return number;
    for (const TreeBox& box : drawing_.boxes) {
        if (!box.reference.isEmpty() && box.referenceFrame.contains(point))
            return chart_.firstNumberOf(box.slot);
    }
    return 0;
}

void AncestorsWindowLogic::select(int32_t number)
{
    if (number == selected_ || !drawing_.box(number))
        return;
    selected_ = number;
    selectAncestorBox(drawing_, selected_);
}

bool AncestorsWindowLogic::move(AncestorsMove move)
{
    if (!drawing_.box(selected_)) {
        if (drawing_.boxes.empty())
            return false;
        select(drawing_.boxes.front().slot);
        return true;
    }
    const int32_t father = 2 * selected_;
    const int32_t mother = father + 1;
    const auto shown = [this](int32_t number) { return drawing_.box(number) != nullptr; };
    int32_t target = 0;
    switch (move) {
    case AncestorsMove::Child: target = selected_ / 2; break;
    case AncestorsMove::Father: target = father; break;
    case AncestorsMove::Mother: target = mother; break;
    case AncestorsMove::Parent: target = shown(father) ? father : mother; break;
    }
    if (target < 1 || !shown(target))
        return false;
    select(target);
    return true;
}

int AncestorsWindowLogic::generations() const
{
    return chart_.root() != 0 ? chart_.generations()
                              : std::clamp(session_.settings.ancestorGenerations,
                                           Ahnentafel::minGenerations, Ahnentafel::maxGenerations);
}

void AncestorsWindowLogic::setGenerations(int generations)
{
    generations = std::clamp(generations, Ahnentafel::minGenerations, Ahnentafel::maxGenerations);
    if (generations == session_.settings.ancestorGenerations && generations == this->generations())
        return;
    session_.settings.ancestorGenerations = generations;
    if (chart_.root() != 0)
        chart_ = Ahnentafel(session_.records, chart_.root(), generations);
    rebuild();
}

bool AncestorsWindowLogic::enabled(AncestorsCommand command) const
{
    switch (command) {
    case AncestorsCommand::SetRoot: return selectedIndividual() != 0 && selected_ != 1;
    case AncestorsCommand::Back: return !history_.empty();
    case AncestorsCommand::Descendants:
    case AncestorsCommand::ShowInBrowser: return selectedIndividual() != 0;
    case AncestorsCommand::HtmlReport: return chart_.root() != 0;
    }
    return false;
}

void AncestorsWindowLogic::run(AncestorsCommand command)
{
    if (!enabled(command))
        return;
    const int32_t individual = selectedIndividual();
    switch (command) {
    case AncestorsCommand::SetRoot:
        history_.push_back({chart_.root(), selected_});
        showRoot(individual, 1);
        break;
    case AncestorsCommand::Back: {
        const Place previous = history_.back();
        history_.pop_back();
        showRoot(previous.root, previous.selected);
        break;
    }
    case AncestorsCommand::Descendants:
        session_.curInd = individual;
        session_.tree.treeBuilt = false;
        session_.showWindow(AppWindow::Tree);
        break;
    case AncestorsCommand::ShowInBrowser:
        session_.openBrowser(ViewKind::Individual, individual, BrowserCaller::MainWindow);
        session_.notifyChanged();
        break;
    case AncestorsCommand::HtmlReport: writeHtmlReport(); break;
    }
}

void AncestorsWindowLogic::writeHtmlReport()
{
    // A fault while the page is made is a message, as every command's is.
    std::optional<Result<QString>> made;
    session_.guarded([&] {
        made = writeHtmlAncestorsReport(session_, chart_.root(), chart_.generations());
    });
    if (!made)
        return;
    const Result<QString>& written = *made;
    if (!written) {
        session_.messages().warning(written.message());
        return;
    }
    notice_ = QStringLiteral("Report written to %1").arg(QDir::toNativeSeparators(*written));
    reportToOpen_ = *written;
}

int AncestorsWindowLogic::fontSize() const { return session_.settings.FontSize; }

void AncestorsWindowLogic::setFontSize(int fontSize)
{
    if (fontSize < 1 || fontSize > 4 || fontSize == session_.settings.FontSize)
        return;
    session_.settings.FontSize = fontSize;
    settingsChanged();
}

bool AncestorsWindowLogic::option(TreeOption option) const
{
    return treeOptionIn(session_.settings, option);
}

void AncestorsWindowLogic::setOption(TreeOption option, bool on)
{
    treeOptionIn(session_.settings, option) = on;
    settingsChanged();
}

void AncestorsWindowLogic::settingsChanged()
{
    if (!(madeWith_ == lookSettings()) && chart_.root() != 0)
        rebuild();
}

AncestorsWindowLogic::LookSettings AncestorsWindowLogic::lookSettings() const
{
    const Settings& s = session_.settings;
    return {s.SurnameStyle, s.SurnamePosn,  s.FontSize,  s.ViewDates,
            s.ViewSurnames, s.ViewMainLine, s.BackColour};
}

QString AncestorsWindowLogic::takeNotice() { return std::exchange(notice_, QString()); }

QString AncestorsWindowLogic::takeReportToOpen() { return std::exchange(reportToOpen_, QString()); }

}  // namespace tav
