#include "Controllers/History/FileHistoryWindowController.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QSplitter>
#include <QStackedWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "Controllers/CommitList/CommitListModel.h"
#include "Controls/Diff/DiffContent.h"
#include "Controls/FileDiffView/FileDiffView.h"
#include "Git/Commands/Revision/GetFileHistoryGitCommand.h"
#include "Git/Commands/Revision/GetRevisionFileChangesGitCommand.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Jobs/QueuedCall.h"
#include "Models/FileContent/DiffSettings.h"

namespace {
enum Column { SubjectColumn, AuthorColumn, DateColumn, ShaColumn };
}

FileHistoryWindowController::FileHistoryWindowController(GitModule module, std::shared_ptr<JobQueue> queue, QString path,
                                                         Actions actions, QWidget* parent)
    : QDialog(parent), module_(std::move(module)), queue_(std::move(queue)), path_(std::move(path)), actions_(std::move(actions)) {
  setObjectName(QStringLiteral("fileHistoryWindow"));
  setWindowFlag(Qt::Window);
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(tr("History: %1").arg(path_));
  resize(1100, 750);

  status_ = new QLabel(this);
  list_ = new QTreeWidget(this);
  list_->setObjectName(QStringLiteral("fileHistoryList"));
  list_->setHeaderLabels({tr("Subject"), tr("Author"), tr("Date"), tr("SHA")});
  list_->setRootIsDecorated(false);
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list_->setContextMenuPolicy(Qt::CustomContextMenu);
  list_->header()->setStretchLastSection(false);
  list_->header()->setSectionResizeMode(SubjectColumn, QHeaderView::Stretch);
  list_->setColumnWidth(AuthorColumn, 160);
  list_->setColumnWidth(DateColumn, 110);
  list_->setColumnWidth(ShaColumn, 80);

  auto* hintPage = new QWidget(this);
  selectionHint_ = new QLabel(QStringLiteral("Select two commits to see difference between them"), hintPage);
  selectionCount_ = new QLabel(hintPage);
  selectionCount_->setObjectName(QStringLiteral("selectionCount"));
  for (QLabel* label : {selectionHint_, selectionCount_}) label->setAlignment(Qt::AlignCenter);
  auto* hintLayout = new QVBoxLayout(hintPage);
  hintLayout->addStretch();
  hintLayout->addWidget(selectionHint_);
  hintLayout->addWidget(selectionCount_);
  hintLayout->addStretch();
  diff_ = new FileDiffView(FileDiffView::Mode::readOnly, this);
  pages_ = new QStackedWidget(this);
  pages_->addWidget(hintPage);
  pages_->addWidget(diff_);

  auto* splitter = new QSplitter(Qt::Vertical, this);
  splitter->addWidget(list_);
  splitter->addWidget(pages_);
  splitter->setSizes({260, 490});
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(splitter, 1);
  layout->addWidget(status_);
  layout->addWidget(buttons);

  connect(list_, &QTreeWidget::itemSelectionChanged, this, &FileHistoryWindowController::selectionChanged);
  connect(list_, &QTreeWidget::customContextMenuRequested, this, &FileHistoryWindowController::showMenu);
  connect(list_, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item) {
    if (actions_.selectRevision) actions_.selectRevision(item->data(ShaColumn, Qt::UserRole).toString());
  });
  selectionChanged();
}

FileHistoryWindowController::~FileHistoryWindowController() {
  for (const auto& weak : {loadJob_, showDiffJob_}) {
    if (auto job = weak.lock()) job->progress().cancel();
  }
}

QString FileHistoryWindowController::selectedCountText(int count) { return QString::number(count) + QStringLiteral(" commits selected"); }

bool FileHistoryWindowController::isShowingDiff() const { return pages_->currentWidget() == diff_; }

void FileHistoryWindowController::load() {
  if (!queue_) return;
  status_->setText(tr("Loading file history..."));
  QPointer<FileHistoryWindowController> guard(this);
  const GitModule module = module_;
  const QString path = path_;
  auto job = Job::make(QStringLiteral("Load history for '%1'").arg(path), Job::Show::everywhere(), Job::ProgressType::infinite,
                       [guard, module, path](JobProgress& progress) {
                         progress.update(0, QStringLiteral("Loading file history..."), JobProgressState::inProgress);
                         auto result = GetFileHistoryGitCommand::execute(module, path, std::nullopt, &progress);
                         if (progress.isCanceled()) return;
                         postQueuedCall(qApp, [guard, result = std::move(result)] {
                           if (!guard) return;
                           if (!result) {
                             guard->status_->setText(tr("The history could not be read: %1").arg(describe(result.error())));
                             Q_EMIT guard->historyLoaded();
                             return;
                           }
                           guard->history_ = result.value();
                           const QDateTime now = QDateTime::currentDateTime();
                           for (const auto& entry : guard->history_) {
                             const Revision& revision = *entry.revision;
                             auto* item = new QTreeWidgetItem(guard->list_);
                             item->setText(SubjectColumn, revision.message());
                             item->setText(AuthorColumn, revision.author());
                             item->setText(DateColumn, CommitListModel::relativeDate(revision.authorDate(), now));
                             item->setToolTip(DateColumn, QLocale().toString(revision.authorDate().toLocalTime(), QLocale::LongFormat));
                             item->setText(ShaColumn, revision.sha().toString().left(7));
                             item->setData(ShaColumn, Qt::UserRole, revision.sha().toString());
                           }
                           const int count = static_cast<int>(guard->history_.size());
                           guard->status_->setText(count == 1 ? tr("1 commit") : tr("%1 commits").arg(count));
                           if (count > 0) guard->list_->setCurrentItem(guard->list_->topLevelItem(0));
                           Q_EMIT guard->historyLoaded();
                         });
                       });
  loadJob_ = job;
  queue_->schedule(job);
}

QString FileHistoryWindowController::pathAt(int row) const {
  const auto& files = history_[static_cast<size_t>(row)].changedFiles;
  return files.empty() ? path_ : files.front()->path;
}

void FileHistoryWindowController::selectionChanged() {
  if (auto previous = showDiffJob_.lock()) previous->progress().cancel();
  ++diffRequest_;
  std::vector<int> rows;
  for (QTreeWidgetItem* item : list_->selectedItems()) rows.push_back(list_->indexOfTopLevelItem(item));
  std::sort(rows.begin(), rows.end());
  if (rows.empty() || rows.size() > 2 || !queue_) {
    selectionCount_->setText(selectedCountText(static_cast<int>(rows.size())));
    pages_->setCurrentIndex(0);
    return;
  }
  // The newer commit is higher in the list; one commit alone is compared with its parent.
  const RevisionPtr newer = history_[static_cast<size_t>(rows.front())].revision;
  auto file = std::make_shared<ChangedFile>();
  file->path = pathAt(rows.front());
  file->changeType = ChangeType::modified;
  file->tracked = true;
  std::optional<QString> other;
  if (rows.size() == 2) {
    other = history_[static_cast<size_t>(rows.back())].revision->sha().toString();
    const QString olderPath = pathAt(rows.back());
    if (olderPath != file->path) file->oldPath = olderPath;
  } else {
    const auto& files = history_[static_cast<size_t>(rows.front())].changedFiles;
    if (!files.empty()) file->oldPath = files.front()->oldPath;
    if (!newer->parents().empty()) other = newer->parents().front().toString();
  }
  pages_->setCurrentWidget(diff_);
  diff_->showMessage(tr("Loading..."));
  QPointer<FileHistoryWindowController> guard(this);
  const GitModule module = module_;
  const QString sha = newer->sha().toString();
  const DiffSettings settings = DiffSettings::fromPreferences();
  const int request = diffRequest_;
  auto job = Job::make(QStringLiteral("Load diff for history"), Job::Show::none(), Job::ProgressType::infinite,
                       [guard, module, sha, other, file, settings, request](JobProgress& progress) {
                         DiffContent content = diffContentFrom(
                             GetRevisionFileChangesGitCommand::execute(module, sha, other, file, settings, &progress),
                             XFilePatch::Location::revision, false);
                         if (progress.isCanceled()) return;
                         postQueuedCall(qApp, [guard, request, content = std::move(content)]() mutable {
                           if (!guard || guard->diffRequest_ != request) return;
                           guard->diff_->showContent(std::move(content));
                           Q_EMIT guard->diffLoaded();
                         });
                       });
  showDiffJob_ = job;
  queue_->schedule(job);
}

void FileHistoryWindowController::showMenu(const QPoint& position) {
  QTreeWidgetItem* item = list_->itemAt(position);
  if (!item) return;
  const int row = list_->indexOfTopLevelItem(item);
  const QString sha = item->data(ShaColumn, Qt::UserRole).toString();
  const QString path = pathAt(row);
  QMenu menu(this);
  menu.addAction(tr("Show Commit in History"), this, [this, sha] {
    if (actions_.selectRevision) actions_.selectRevision(sha);
  });
  menu.addAction(tr("Blame..."), this, [this, sha, path] {
    if (actions_.blame) actions_.blame(sha, path);
  });
  menu.addSeparator();
  menu.addAction(tr("Copy SHA"), this, [sha] { QApplication::clipboard()->setText(sha); });
  menu.exec(list_->viewport()->mapToGlobal(position));
}
