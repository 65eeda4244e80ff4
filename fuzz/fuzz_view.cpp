// SPDX-License-Identifier: GPL-3.0-or-later
// Fuzz target: a saved tree view ("temp.gds") opened over a generated file
// of 200 people, as the tree window opens it, then driven by every command
// of the window. A view the reader takes must be one the window can show.
#include "app/GedcomLoading.h"
#include "bench/GedcomGenerator.h"
#include "fuzz/FuzzSupport.h"
#include "fuzz/TreeDriving.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace tav;

namespace {

// The people every view names: tav-generate 200 FILE --seed 7 writes the
// same file, which scripts/fuzz.sh uses to make the seed views.
Session& loadedSession()
{
    static fuzz::QuietMessages messages;
    static Session session(messages);
    static const bool loaded = [] {
        session.setToday(fuzz::fuzzToday());
        GeneratorOptions options;
        options.individuals = 200;
        options.seed = 7;
        QByteArray bytes = generateGedcom(options);
        loadGedcomBytes(session, QStringLiteral("view.ged"), bytes);
        return true;
    }();
    Q_UNUSED(loaded);
    return session;
}

// The window opens "temp.gds" of the working folder: a folder of the
// target's own, so nothing of the user's is read or written.
const QString& viewFile()
{
    static QTemporaryDir folder;
    static const QString path = [] {
        QDir::setCurrent(folder.path());
        return QDir::current().absoluteFilePath(treeViewFileName());
    }();
    return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    Session& session = loadedSession();
    const QString& path = viewFile();
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return 0;
        file.write(reinterpret_cast<const char*>(data), qint64(size));
    }
    session.settings = Settings{};
    session.curInd = 1;
    session.tree = TreeFlags{};
    TreeWindowLogic tree = fuzz::newTreeWindow(session);
    tree.activate();
    tree.run(TreeCommand::OpenView);
    fuzz::driveTreeWindow(tree);
    return 0;
}
