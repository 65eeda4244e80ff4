// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CliRun.h"

#include "app/Session.h"
#include "calc/Ahnentafel.h"
#include "core/DisplayText.h"
#include "core/TableText.h"
#include "windowlogic/browser/BrowserLogic.h"

#include <algorithm>

namespace tav {

namespace {

// A control character that a terminal would act on rather than show.
bool isHiddenControl(char16_t c) { return c < 0x20 || c == 0x7F || (c >= 0x80 && c <= 0x9F); }

QString controlEscape(char16_t c)
{
    return QStringLiteral("\\x") +
           QStringLiteral("%1").arg(uint(c), 2, 16, QLatin1Char('0')).toUpper();
}

}  // namespace

QString withControlsShown(const QString& text)
{
    if (std::none_of(text.begin(), text.end(), [](QChar c) {
            return isHiddenControl(c.unicode()) && c != u'\t' && c != u'\r' && c != u'\n';
        }))
        return text;
    QString out;
    for (QChar c : text) {
        if (isHiddenControl(c.unicode()) && c != u'\t' && c != u'\r' && c != u'\n')
            out += controlEscape(c.unicode());
        else
            out += c;
    }
    return out;
}

void CliRun::print(const QString& line) const { output.out(withControlsShown(line)); }

void CliRun::printReport(const QString& text) const
{
    for (const QString& line : withNewlines(text).split(QLatin1Char('\n')))
        print(line);
}

void CliRun::printBytes(const QByteArray& bytes) const
{
    if (output.bytes) {
        output.bytes(bytes);
        return;
    }
    QString text = QString::fromUtf8(bytes);
    if (text.endsWith(QLatin1String("\r\n")))
        text.chop(2);
    for (const QString& line : text.split(QLatin1String("\r\n")))
        print(line);
}

bool CliRun::isWholeNumberText(const QString& text)
{
    const QString number = text.trimmed();
    const qsizetype first = number.startsWith(u'-') || number.startsWith(u'+') ? 1 : 0;
    return number.size() > first && std::all_of(number.begin() + first, number.end(),
                                                [](QChar c) { return c >= u'0' && c <= u'9'; });
}

Result<int32_t> CliRun::integerArgument(const QString& text)
{
    bool ok = false;
    const int value = text.toInt(&ok);
    if (ok)
        return value;
    return Outcome::failed(usageProblem(
        isWholeNumberText(text) ? QStringLiteral("\"%1\" is too large a number").arg(text)
                                : QStringLiteral("\"%1\" is not a whole number").arg(text)));
}

Result<int32_t> CliRun::slotArg(qsizetype i, ViewKind kind) const
{
    const QString text = args.value(i);
    // A number of any size names a record or none; only the file can say.
    if (isWholeNumberText(text)) {
        bool fits = false;
        const int32_t slot = text.toInt(&fits);
        if (!fits || !namesRecord(session.records, kind, slot))
            return Outcome::failed(noSuchRecordText(kind, text.trimmed()));
        return slot;
    }
    return intArg(i);
}

int CliRun::refuse(const QString& message) const
{
    for (const QString& line : message.split(QLatin1Char('\n')))
        output.err(line);
    return refusedStatus;
}

int CliRun::run(const std::function<void()>& routine) const
{
    return session.guarded(routine) ? 0 : 3;
}

Result<int32_t> generationsArgument(const QString& text)
{
    const Result<int32_t> number = CliRun::integerArgument(text);
    if (number && (*number < Ahnentafel::minGenerations || *number > Ahnentafel::maxGenerations))
        return Outcome::failed(usageProblem(QStringLiteral("--generations takes %1 to %2")
                                                .arg(Ahnentafel::minGenerations)
                                                .arg(Ahnentafel::maxGenerations)));
    return number;
}

QString escaped(const QString& text)
{
    QString out;
    out.reserve(text.size());
    for (QChar c : text) {
        switch (c.unicode()) {
        case u'\\': out += QLatin1String("\\\\"); break;
        case u'\r': out += QLatin1String("\\r"); break;
        case u'\n': out += QLatin1String("\\n"); break;
        case u'\t': out += QLatin1String("\\t"); break;
        default: out += isHiddenControl(c.unicode()) ? controlEscape(c.unicode()) : QString(c);
        }
    }
    return out;
}

void printGridCsv(const CliRun& run, const BrowserLogic& browser)
{
    run.printBytes(csvBytes(browser.table()));
}

void printGrid(const CliRun& run, const BrowserLogic& browser)
{
    run.print(browser.caption());
    const bool family = run.session.browser.viewKind == ViewKind::Family;
    for (int32_t row = 0; row < browser.rowCount(); ++row) {
        QString line =
            escaped(browser.cell(row, 0)) + QLatin1Char('\t') + escaped(browser.cell(row, 1));
        if (family && !browser.cell(row, 2).isEmpty())
            line += QLatin1Char('\t') + escaped(browser.cell(row, 2));
        run.print(line);
    }
}

}  // namespace tav
