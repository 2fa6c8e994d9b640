#include "Controllers/Search/RevisionSearchController.h"

#include <QLabel>
#include <QRegularExpression>

#include "Controllers/CommitList/CommitListView.h"
#include "Controllers/Search/RevisionSearchBar.h"
#include "Controllers/Search/RevisionSearchResultsView.h"
#include "Git/Commands/Revision/RevisionSearchGitCommand.h"
#include "Logging/AdvancedLogger.h"
#include "Repository/RepositoryController.h"
#include "Repository/RevisionSearchCommand.h"

RevisionSearchController::RevisionSearchController(RevisionSearchBar* bar, RevisionSearchResultsView* results,
                                                   CommitListView* commitList, RepositoryController* repository, QObject* parent)
    : QObject(parent), bar_(bar), results_(results), commitList_(commitList), repository_(repository) {
  delay_.setSingleShot(true);
  delay_.setInterval(200);
  connect(&delay_, &QTimer::timeout, this, &RevisionSearchController::startSearch);
  connect(bar_, &RevisionSearchBar::queryChanged, this, &RevisionSearchController::queryChanged);
  connect(bar_, &RevisionSearchBar::nextRequested, this, &RevisionSearchController::next);
  connect(bar_, &RevisionSearchBar::previousRequested, this, &RevisionSearchController::previous);
  connect(bar_, &RevisionSearchBar::closed, this, &RevisionSearchController::close);
  connect(bar_, &RevisionSearchBar::resultsToggled, this, &RevisionSearchController::updateResultsVisibility);
  connect(bar_, &RevisionSearchBar::resultsFocusRequested, this, [this] {
    if (!results_->currentItem() && results_->topLevelItemCount() > 0) results_->setCurrentItem(results_->topLevelItem(0));
    results_->setFocus(Qt::ShortcutFocusReason);
  });
  connect(results_, &RevisionSearchResultsView::revisionChosen, this, [this](const Sha& sha) {
    commitList_->selectSha(sha);
    updateCount();
  });
  connect(results_, &RevisionSearchResultsView::fileChosen, this, [this](const Sha& sha, const QString& path) {
    if (!commitList_->selectSha(sha)) return;
    updateCount();
    Q_EMIT fileRequested(sha, path);
  });
  // A refresh moves the rows; the marks follow inside the model, the rest here.
  connect(commitList_->commitModel(), &QAbstractItemModel::modelReset, this, &RevisionSearchController::commitListChanged);
  connect(commitList_, &CommitListView::currentRevisionChanged, this, [this](const RevisionPtr& revision) {
    if (revision) results_->showSha(revision->sha());
    updateCount();
  });
  results_->hide();
}

void RevisionSearchController::activate() {
  bar_->activate();
  updateResultsVisibility();
}

void RevisionSearchController::updateResultsVisibility() { results_->setVisible(bar_->isVisible() && bar_->isShowingResults()); }

void RevisionSearchController::commitListChanged() {
  const CommitListModel* model = commitList_->commitModel();
  results_->updateListed([model](const Sha& sha) { return model->row(sha).has_value(); });
  updateCount();
}

int RevisionSearchController::matchCount() const { return static_cast<int>(commitList_->commitModel()->search().matchRows().size()); }

void RevisionSearchController::queryChanged(const RevisionSearchQuery&) {
  // The search under way is of no use any more, even before the next one starts.
  RevisionSearchCommand::cancel(*repository_);
  running_ = false;
  delay_.start();
}

void RevisionSearchController::startSearch() {
  const RevisionSearchQuery query = bar_->query();
  CommitListModel* model = commitList_->commitModel();
  RevisionSearchCommand::cancel(*repository_);
  failure_.clear();
  jumpedToSha_ = false;
  if (query.searchString.trimmed().isEmpty()) {
    results_->start(query.type);
    model->search().clear();
    model->searchMarksChanged();
    running_ = false;
    updateCount();
    return;
  }
  static const QRegularExpression shaPattern(QStringLiteral("^[0-9a-fA-F]{4,40}$"));
  const QString text = query.searchString.trimmed();
  if (shaPattern.match(text).hasMatch()) {
    if (const auto row = model->row(text)) jumpedToSha_ = commitList_->selectSha(model->revision(*row)->sha());
  }
  model->search().start(query.type, query.searchString);
  results_->start(query.type);
  model->searchMarksChanged();
  running_ = true;
  updateCount();
  RevisionSearchCommand::start(
      *repository_, query, this, [this](const RevisionWithFiles& match) { recordMatch(match); },
      [this](const GitVoidResult& result) { finish(result); });
}

void RevisionSearchController::recordMatch(const RevisionWithFiles& match) {
  if (!match.revision) return;
  CommitListModel* model = commitList_->commitModel();
  const bool first = model->search().matchRows().empty();
  const auto row = model->search().recordMatch(match.revision->sha());
  results_->addMatch(match, row.has_value());
  if (!row) return;
  model->searchMarksChanged(*row);
  // The first match is shown at once unless a sha was asked for.
  if (first && !jumpedToSha_) commitList_->selectSha(match.revision->sha());
  updateCount();
}

void RevisionSearchController::finish(const GitVoidResult& result) {
  running_ = false;
  if (!result) {
    failure_ = describe(result.error());
    LOG_WARNING(QStringLiteral("Search failed: %1").arg(failure_));
  }
  updateCount();
  Q_EMIT searchFinished();
}

void RevisionSearchController::next() { step(true); }

void RevisionSearchController::previous() { step(false); }

void RevisionSearchController::step(bool forward) {
  const std::vector<int>& rows = commitList_->commitModel()->search().matchRows();
  if (rows.empty()) return;
  const QModelIndex current = commitList_->currentIndex();
  const int currentRow = current.isValid() ? current.row() : -1;
  int target = -1;
  if (forward) {
    const auto it = std::upper_bound(rows.begin(), rows.end(), currentRow);
    target = it == rows.end() ? rows.front() : *it;  // past the last match: wrap around
  } else {
    const auto it = std::lower_bound(rows.begin(), rows.end(), currentRow);
    target = it == rows.begin() ? rows.back() : *std::prev(it);
  }
  commitList_->selectSha(commitList_->commitModel()->revision(target)->sha());
  updateCount();
}

void RevisionSearchController::close() {
  RevisionSearchCommand::cancel(*repository_);
  delay_.stop();
  running_ = false;
  CommitListModel* model = commitList_->commitModel();
  model->search().clear();
  model->searchMarksChanged();
  results_->start(RevisionSearchType::message);
  bar_->hide();
  results_->hide();
  commitList_->setFocus();
}

void RevisionSearchController::updateCount() {
  const CommitListModel* model = commitList_->commitModel();
  if (!model->search().searchResult()) {
    bar_->setCountText(failure_.isEmpty() ? QString() : tr("Search failed"));
    bar_->countLabel()->setToolTip(failure_);
    return;
  }
  const std::vector<int>& rows = model->search().matchRows();
  const int count = static_cast<int>(rows.size());
  bar_->countLabel()->setToolTip(failure_);
  if (!failure_.isEmpty()) {
    bar_->setCountText(tr("Search failed"));
    return;
  }
  const QModelIndex current = commitList_->currentIndex();
  const auto at = current.isValid() ? std::find(rows.begin(), rows.end(), current.row()) : rows.end();
  QString text;
  if (count == 0) {
    text = running_ ? tr("Searching...") : tr("No matches");
  } else if (at != rows.end()) {
    text = tr("%1 of %2").arg(at - rows.begin() + 1).arg(count);
  } else {
    text = count == 1 ? tr("1 match") : tr("%1 matches").arg(count);
  }
  if (count >= RevisionSearchGitCommand::maxCount) bar_->countLabel()->setToolTip(tr("The search shows the first %1 matches").arg(count));
  bar_->setCountText(text);
}
