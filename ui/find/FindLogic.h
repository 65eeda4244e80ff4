#pragma once

#include "ui/find/WordSearch.h"

#include <QString>
#include <QStringList>

namespace tav {

class Session;

// The find window without its window: the search box and its check boxes,
// the statistical queries of the lower section, and the results list. The
// results live in the session, so they are there again when the window is
// opened anew.
class FindLogic {
public:
    explicit FindLogic(Session& session);

    // Search box and check boxes (all four kinds ticked at first).
    QString searchText;
    bool caseSensitive = false;
    SearchKinds kinds;

    // Find: the words of the search box in the ticked kinds. One record
    // found opens the browser on it.
    void find();

    // More/Less: the query section shown or hidden, with the window's
    // height in twips.
    void moreLess();
    bool expanded() const { return expanded_; }
    QString moreLessCaption() const;
    int heightTwips() const { return expanded_ ? 4965 : 4230; }

    // The queries: choosing one runs it, or, for those that take a number,
    // readies the number box for Go.
    static QStringList queryChoices();
    int queryIndex() const { return queryIndex_; }
    void queryChosen(int index);
    QString numberText;
    bool numberEnabled() const { return numberEnabled_; }
    void go();

    // The results list.
    const QString& heading() const { return heading_; }
    const QStringList& lines() const { return lines_; }
    // A line picked: the browser opens on its record.
    void lineChosen(int line);

private:
    void showResults();
    void openSingleResult();

    Session& session_;
    bool expanded_ = false;
    int queryIndex_ = 0;
    bool numberEnabled_ = false;
    QString heading_;
    QStringList lines_;
};

}  // namespace tav
