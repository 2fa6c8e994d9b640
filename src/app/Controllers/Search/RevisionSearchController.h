#pragma once
// Runs the commit search of the search bar as the user types and marks what it finds in
// the commit list. Each change of the query cancels the search under way at once; the
// next one starts when typing pauses. A text that names a listed commit by its sha,
// whole or abbreviated, selects that commit as well. The matches are listed beside the
// commit list too; choosing one there selects its commit.
#include <QObject>
#include <QTimer>

#include "Git/ResultError.h"
#include "Models/RevisionSearchQuery.h"
#include "Models/RevisionWithFiles.h"

class CommitListView;
class RepositoryController;
class RevisionSearchBar;
class RevisionSearchResultsView;

class RevisionSearchController : public QObject {
  Q_OBJECT
 public:
  RevisionSearchController(RevisionSearchBar* bar, RevisionSearchResultsView* results, CommitListView* commitList,
                           RepositoryController* repository, QObject* parent = nullptr);

  // Opens the bar (Ctrl+F).
  void activate();
  void next();
  void previous();
  // Leaves the search: the marks go, the list gets the focus back.
  void close();

  bool isRunning() const { return running_; }
  int matchCount() const;
  // How long typing must pause before a search starts.
  void setDelay(int msecs) { delay_.setInterval(msecs); }

 Q_SIGNALS:
  // A search has ended (not one that a newer query canceled).
  void searchFinished();
  // A file of a match was chosen in the list: the commit is selected, its file wanted.
  void fileRequested(const Sha& sha, const QString& path);

 private:
  void queryChanged(const RevisionSearchQuery& query);
  void startSearch();
  void recordMatch(const RevisionWithFiles& match);
  void finish(const GitVoidResult& result);
  void step(bool forward);
  void updateCount();
  void updateResultsVisibility();
  void commitListChanged();

  RevisionSearchBar* bar_;
  RevisionSearchResultsView* results_;
  CommitListView* commitList_;
  RepositoryController* repository_;
  QTimer delay_;
  bool running_ = false;
  bool jumpedToSha_ = false;
  QString failure_;
};
