#pragma once
// The commit search field above the commit list: what to search (message, author,
// content, path), where (all branches or the current one), the count of matches and the
// way between them. Return goes to the next match, Shift+Return to the previous one,
// Escape leaves the search, the Down key goes to the list of matches, which a button
// shows or hides.
#include <QWidget>

#include "Models/RevisionSearchQuery.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QToolButton;

class RevisionSearchBar : public QWidget {
  Q_OBJECT
 public:
  explicit RevisionSearchBar(QWidget* parent = nullptr);

  RevisionSearchQuery query() const;
  QLineEdit* field() const { return field_; }
  QComboBox* typeBox() const { return type_; }
  QComboBox* scopeBox() const { return scope_; }
  QLabel* countLabel() const { return count_; }
  QToolButton* resultsButton() const { return results_; }
  bool isShowingResults() const;

  // Shows the bar with the field focused and its text selected.
  void activate();
  void setCountText(const QString& text);

  static QString typeTitle(RevisionSearchType type);

 Q_SIGNALS:
  void queryChanged(const RevisionSearchQuery& query);
  void nextRequested();
  void previousRequested();
  void closed();
  void resultsToggled(bool shown);
  void resultsFocusRequested();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QComboBox* type_;
  QComboBox* scope_;
  QLineEdit* field_;
  QLabel* count_;
  QToolButton* previous_;
  QToolButton* next_;
  QToolButton* results_;
  QToolButton* close_;
};
