#pragma once
#include <QTextBrowser>

#include "Models/Revision.h"
#include "Models/RevisionDetails.h"

// Sha, parents (clickable), author and committer with dates, and the full message of
// the selected commit.
class RevisionHeaderView : public QTextBrowser {
  Q_OBJECT
 public:
  explicit RevisionHeaderView(QWidget* parent = nullptr);
  void setDetails(const RevisionDetails& details);
  void showLoading(const QString& sha);
  void showError(const QString& message);
  // Two commits compared: the older one, then the newer one whose tree the files show.
  void showComparison(const Revision& older, const Revision& newer);

  // The HTML shown for the details; pure so that tests can read it.
  static QString html(const RevisionDetails& details);

 Q_SIGNALS:
  void parentRequested(const QString& sha);

 private:
  void restyle();
  void showHtml(const QString& html);

  QString html_;
};
