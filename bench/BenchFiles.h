// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/Messages.h"
#include "app/Session.h"
#include "bench/GedcomGenerator.h"

#include <QString>

namespace tav::bench {

// A generated file of that many individuals, written once per run to a
// temporary folder; shuffled, its records lie in a random order; its
// cross-references numbered, of twelve digits or text.
QString generatedFile(int individuals, bool shuffled = false,
                      GeneratorOptions::Xrefs xrefs = GeneratorOptions::Xrefs::Numbered);

// A real file of ../shared/gedcom, or "" when the folder is absent.
QString sharedFile(const char* name);

// A session holding a file; `loaded` is false when the file could not be read.
struct LoadedSession {
    explicit LoadedSession(const QString& path);
    RecordingMessages messages;
    Session session{messages};
    bool loaded = false;
};

// The generated file of 40000 individuals, loaded once per run.
Session& generatedSession();

}  // namespace tav::bench
