// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/Session.h"
#include "tree/TextMeasure.h"
#include "tree/TreeModel.h"
#include "tree/TreeViewFile.h"
#include "windowlogic/tree/TreeWindowLogic.h"

#include <algorithm>
#include <memory>

namespace tav::fuzz {

// Text measured by its length, so the layout runs without fonts and a
// finding replays the same on any machine.
class CharacterMeasure : public TextMeasure {
public:
    explicit CharacterMeasure(int fontSize) : unit_(4.0 + fontSize) {}
    double textWidth(const QString& text) const override { return unit_ * double(text.size()); }
    double lineHeight() const override { return 2.0 * unit_; }

private:
    double unit_;
};

inline TreeWindowLogic newTreeWindow(Session& session)
{
    return TreeWindowLogic(session,
                           [](int fontSize) { return std::make_unique<CharacterMeasure>(fontSize); });
}

// The tree window's commands as a user gives them: every command on each
// of the first boxes of the view (the view changes under them, as it
// would), then the arrow keys. Saving, opening and the HTML report write
// files and are left out.
inline void driveTreeCommands(TreeWindowLogic& tree)
{
    constexpr TreeCommand commands[] = {
        TreeCommand::ShowDescendantsMost, TreeCommand::NextSpouse,
        TreeCommand::ShowDescendantsEldest, TreeCommand::CountDescendants,
        TreeCommand::FindRelationship,    TreeCommand::ShowParents,
        TreeCommand::TriangleView,        TreeCommand::TriangleView,
        TreeCommand::SetTop,              TreeCommand::ShowInBrowser,
        TreeCommand::GoBack};
    for (int32_t slot = 1; slot <= std::min(tree.model().nTreeInd, 8); ++slot) {
        for (TreeCommand command : commands) {
            tree.select(slot);
            if (tree.enabled(command))
                tree.run(command);
        }
        tree.toolTip(slot);
    }
    for (TreeMove move : {TreeMove::Down, TreeMove::Right, TreeMove::Left, TreeMove::Up})
        tree.move(move);
}

// The font sizes and the options changed, then every text the window shows.
inline void driveTreeSettings(TreeWindowLogic& tree)
{
    for (int fontSize : {4, 1, 2})
        tree.setFontSize(fontSize);
    for (TreeOption option : treeOptions) {
        tree.setOption(option, !tree.option(option));
        tree.outputDrawing();
        tree.setOption(option, !tree.option(option));
    }
    tree.caption();
    tree.statusText();
    tree.triangleLabel();
    tree.takeNotice();
    treeViewLines(tree.model());
}

inline void driveTreeWindow(TreeWindowLogic& tree)
{
    driveTreeCommands(tree);
    driveTreeSettings(tree);
}

}  // namespace tav::fuzz
