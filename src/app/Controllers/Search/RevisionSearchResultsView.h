#pragma once
// The matches of the commit search as a list of their own, in the order git finds them:
// subject, author and date, and for a content or path search the files that matched
// under each commit. A match the commit list doesn't show (hidden by its filters, or past
// the history read so far) stays in the list, greyed.
#include <QTreeWidget>
#include <QDateTime>
#include <functional>
#include <unordered_map>

#include "Models/RevisionSearchQuery.h"
#include "Models/RevisionWithFiles.h"

class RevisionSearchResultsView : public QTreeWidget {
  Q_OBJECT
 public:
  explicit RevisionSearchResultsView(QWidget* parent = nullptr);

  // Empties the list for a search of that type.
  void start(RevisionSearchType type);
  void addMatch(const RevisionWithFiles& match, bool listed);
  // Marks again which matches the commit list shows, after it changed.
  void updateListed(const std::function<bool(const Sha&)>& listed);
  // Makes the match of `sha` current without telling; false when it isn't a match.
  bool showSha(const Sha& sha);

  // Wide enough for a subject beside the commit list.
  QSize sizeHint() const override;

  int matchCount() const { return topLevelItemCount(); }
  QTreeWidgetItem* matchItem(const Sha& sha) const;
  static Sha shaOf(const QTreeWidgetItem* item);
  // The file of a file row; empty for a commit row.
  static QString pathOf(const QTreeWidgetItem* item);

 Q_SIGNALS:
  // The user chose a match, or one of its files.
  void revisionChosen(const Sha& sha);
  void fileChosen(const Sha& sha, const QString& path);

 private:
  void setListed(QTreeWidgetItem* item, bool listed);

  RevisionSearchType type_ = RevisionSearchType::message;
  QDateTime now_;  // relative dates of one search count from its start
  std::unordered_map<Sha, QTreeWidgetItem*> items_;
};
