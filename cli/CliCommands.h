// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tav {

struct CliRun;
struct DrawingCommands;

// The commands, by group. Each prints what its window would show and
// returns the exit status (0 done, 2 when it refuses its arguments, 3 after
// a fault).

// Records and the file (RecordCommands.cpp).
int infoCommand(CliRun& run);
int showCommand(CliRun& run);

// The find window (SearchCommands.cpp).
int findCommand(CliRun& run);
int queryCommand(CliRun& run);

// Relationships and descendants (FamilyCommands.cpp).
int relateCommand(CliRun& run);
int descendantsCommand(CliRun& run);

// The text reports (ReportCommands.cpp).
int reportCommand(CliRun& run);

// The family tree window's view, and its picture or the ancestors chart's
// (TreeCommands.cpp), in the library that draws: the drawing commands.
int treeCommand(CliRun& run);
int exportCommand(CliRun& run);
const DrawingCommands& drawingCommands();

// The HTML descendants or ancestors report (HtmlCommand.cpp).
int htmlCommand(CliRun& run);

// The ancestors chart (AncestorsCommand.cpp).
int ancestorsCommand(CliRun& run);

}  // namespace tav
