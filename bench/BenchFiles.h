#pragma once

#include <QString>

namespace tav::bench {

// A generated file of that many individuals, written once per run to a
// temporary folder.
QString generatedFile(int individuals);

// A real file of ../shared/gedcom, or "" when the folder is absent.
QString sharedFile(const char* name);

}  // namespace tav::bench
