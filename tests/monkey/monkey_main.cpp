// SPDX-License-Identifier: GPL-3.0-or-later
// tav-monkey: every window of the viewer driven by random clicks, keys,
// wheel turns, resizes and commands on a real file, on the offscreen
// platform, for TAV_MONKEY_SECONDS (default 20) with the seed
// TAV_MONKEY_SEED (default fixed; printed, so a run can be replayed).
// Message boxes are answered by the session's recorder, file dialogs by
// the monkey. The process can write nothing but a /tmp of its own (exit 77,
// not run, where it cannot be shut in so). Exits 1 when a problem was seen;
// a crash or a sanitizer report ends it with the last actions printed.
#include "app/Messages.h"
#include "app/Session.h"
#include "bench/GedcomGenerator.h"
#include "settings/RegistryStore.h"
#include "tests/monkey/Confinement.h"
#include "tests/monkey/Monkey.h"
#include "ui/main/MainWindow.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <csignal>
#include <cstdio>

#if defined(__SANITIZE_ADDRESS__)
#define TAV_MONKEY_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TAV_MONKEY_SANITIZED 1
#endif
#endif
#ifdef TAV_MONKEY_SANITIZED
#include <sanitizer/common_interface_defs.h>
#endif

namespace {

void onFatalSignal(int signal)
{
    tav::Monkey::writeLastActions();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

// Every window of the viewer and how a user opens it; a new window joins
// with one line.
std::vector<tav::Monkey::WindowOpener> viewerWindows()
{
    using tav::Session;
    return {
        {"record browser", "tav::BrowserWindow",
         [](Session& s) {
             s.openBrowser(tav::ViewKind::AllIndividuals, tav::BrowserCaller::MainWindow);
         }},
        {"find window", "tav::FindWindow", [](Session& s) { s.showWindow(tav::AppWindow::Find); }},
        {"text viewer", "tav::TextViewer",
         [](Session& s) {
             s.showReport(QStringLiteral("The monkey was here.\r\nTwice."),
                          QStringLiteral("Monkey"));
         }},
        {"options dialog", "tav::OptionsDialog",
         [](Session& s) { s.showWindow(tav::AppWindow::Options); }},
        {"ancestors chart", "tav::AncestorsWindow",
         [](Session& s) {
             // Someone with forebears, a different person each time.
             static int32_t next = 0;
             const int32_t count = s.records.individualCount();
             for (int tries = 0; count > 0 && tries < count; ++tries) {
                 next = next % count + 1;
                 if (s.records.childFamilyOf(s.records.individual(next)) != 0)
                     break;
             }
             s.curInd = std::max(next, 1);
             s.showWindow(tav::AppWindow::Ancestors);
         }},
    };
}

// QTest's notes on events no widget took are the monkey's everyday life.
void quietHandler(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type == QtWarningMsg && (text.contains(QLatin1String("not accepted by receiving widget")) ||
                                 text.startsWith(QLatin1String("This plugin does not support"))))
        return;
    std::fprintf(stderr, "%s\n", qPrintable(text));
}

}  // namespace

int main(int argc, char* argv[])
{
    // First of all, while there is one thread: random clicks in a program
    // that can write files must not reach the user's files.
    if (const QString problem = tav::confineWritesToPrivateTmp(); !problem.isEmpty()) {
        std::fprintf(stderr, "tav-monkey: not run: %s\n", qPrintable(problem));
        return 77;
    }
    // The monkey's home, settings, caches and working folder, all in its /tmp.
    const QString folder = QStringLiteral("/tmp/monkey");
    QDir().mkpath(folder);
    for (const char* name :
         {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
        const QString path = QStringLiteral("/tmp/") + QString::fromLatin1(name).toLower();
        QDir().mkpath(path);
        QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                        QFileDevice::ExeOwner);
        qputenv(name, QFile::encodeName(path));
    }
    qputenv("TMPDIR", "/tmp");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(quietHandler);
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);

    const auto setting = [](const char* name, int fallback) {
        return qEnvironmentVariableIsSet(name) ? qEnvironmentVariableIntValue(name) : fallback;
    };
    const quint32 seed = quint32(setting("TAV_MONKEY_SEED", 20261121));
    const int seconds = setting("TAV_MONKEY_SECONDS", 20);

    // The working folder, where the file dialogs open: a file to open and
    // the help topics.
    QFile::copy(QStringLiteral(TAV_HELP_FILE), QDir(folder).filePath(QStringLiteral("help.txt")));
    tav::GeneratorOptions options;
    options.individuals = 300;
    QFile generated(QDir(folder).filePath(QStringLiteral("generated.ged")));
    if (!generated.open(QIODevice::WriteOnly) || generated.write(tav::generateGedcom(options)) < 0)
        return 2;
    generated.close();

    // The file the monkey opens: a real one when the shared files are there,
    // else the demo file.
    const QString shared = QStringLiteral(TAV_SHARED_GEDCOM_DIR "/royal92.ged");
    const QString file = QFileInfo::exists(shared) ? shared : QStringLiteral(TAV_DEMO_FILE);
    std::fprintf(stderr, "tav-monkey: seed %u, %d s, on %s (replay: TAV_MONKEY_SEED=%u)\n", seed,
                 seconds, qPrintable(file), seed);

    tav::RecordingMessages messages;
    tav::Session session(messages);
    tav::RegistryStore store(QDir(folder).filePath(QStringLiteral("config/Tav.reg")));
    auto* window = new tav::MainWindow(session, store, folder);
    window->show();
    window->startUp(file);

    tav::Monkey monkey(session, window, viewerWindows(), generated.fileName(), seed,
                       qint64(seconds) * 1000);
#ifdef TAV_MONKEY_SANITIZED
    __sanitizer_set_death_callback(tav::Monkey::writeLastActions);
#endif
    for (int signal : {SIGSEGV, SIGABRT, SIGBUS, SIGFPE})
        std::signal(signal, onFatalSignal);

    const QStringList problems = monkey.run();
    delete window;

    std::fprintf(stderr, "tav-monkey: %d actions, %zu messages answered\n", monkey.actions(),
                 messages.entries.size());
    for (auto it = monkey.actionsByWindow().cbegin(); it != monkey.actionsByWindow().cend(); ++it)
        std::fprintf(stderr, "  %6d in %s\n", it.value(), qPrintable(it.key()));
    for (const QString& problem : problems)
        std::fprintf(stderr, "tav-monkey: PROBLEM: %s\n", qPrintable(problem));
    if (!problems.isEmpty())
        tav::Monkey::writeLastActions();
    return problems.isEmpty() ? 0 : 1;
}
