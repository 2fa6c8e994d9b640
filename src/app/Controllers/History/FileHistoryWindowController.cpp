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
#include <QTabBar>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "Controllers/CommitList/CommitListModel.h"
#include "Controls/ChangedFilesView.h"
#include "Controls/ContentView/FileContentView.h"
#include "Controls/Diff/DiffContent.h"
#include "Controls/FileDiffView/FileDiffView.h"
#include "Git/Commands/Revision/GetFileHistoryGitCommand.h"
#include "Git/Commands/Revision/GetRevisionFileContentGitCommand.h"
#include "Git/Commands/Revision/GetRevisionFileChangesGitCommand.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Jobs/QueuedCall.h"
#include "Models/FileContent/DiffSettings.h"
#include "Controls/WindowKeys.h"

namespace {
enum Column { SubjectColumn, AuthorColumn, DateColumn, ShaColumn };
enum Role { ShaRole = Qt::UserRole, RowRole, FileRole };
}

FileHistoryWindowController::FileHistoryWindowController(GitModule module, std::shared_ptr<JobQueue> queue, QString path,
                                                         Actions actions, QWidget* parent)
    : QDialog(parent), module_(std::move(module)), queue_(std::move(queue)), path_(std::move(path)), actions_(std::move(actions)) {
  setObjectName(QStringLiteral("fileHistoryWindow"));
  setWindowFlag(Qt::Window);
  setAttribute(Qt::WA_DeleteOnClose);
  WindowKeys::closeOnEscapeAndCtrlW(this);
  setWindowTitle(tr("History: %1").arg(path_));
  resize(1100, 750);

  status_ = new QLabel(this);
  list_ = new QTreeWidget(this);
  list_->setObjectName(QStringLiteral("fileHistoryList"));
  list_->setHeaderLabels({tr("Subject"), tr("Author"), tr("Date"), tr("SHA")});
  list_->setRootIsDecorated(GetFileHistoryGitCommand::isFolder(path_));
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list_->setContextMenuPolicy(Qt::CustomContextMenu);
  list_->header()->setStretchLastSection(false);
  list_->header()->setSectionResizeMode(SubjectColumn, QHeaderView::Stretch);
  list_->setColumnWidth(AuthorColumn, 160);
  list_->setColumnWidth(DateColumn, 110);
  list_->setColumnWidth(ShaColumn, 80);

  auto* hintPage = new QWidget(this);
  selectionHint_ = new QLabel(isFolder() ? tr("Select a file to see its change, or a file in each of two commits to compare them")
                                         : QStringLiteral("Select two commits to see difference between them"),
                              hintPage);
  selectionCount_ = new QLabel(hintPage);
  selectionCount_->setObjectName(QStringLiteral("selectionCount"));
  for (QLabel* label : {selectionHint_, selectionCount_}) label->setAlignment(Qt::AlignCenter);
  auto* hintLayout = new QVBoxLayout(hintPage);
  hintLayout->addStretch();
  hintLayout->addWidget(selectionHint_);
  hintLayout->addWidget(selectionCount_);
  hintLayout->addStretch();
  diff_ = new FileDiffView(FileDiffView::Mode::readOnly, this);
  content_ = new FileContentView(this);
  pages_ = new QStackedWidget(this);
  pages_->addWidget(hintPage);
  pages_->addWidget(diff_);
  pages_->addWidget(content_);
  // The change a commit made, or the whole file as that commit left it.
  modes_ = new QTabBar(this);
  modes_->setObjectName(QStringLiteral("fileHistoryModes"));
  modes_->setDocumentMode(true);
  modes_->setExpanding(false);
  modes_->addTab(tr("Changes"));
  modes_->addTab(tr("File"));
  auto* lower = new QWidget(this);
  auto* lowerLayout = new QVBoxLayout(lower);
  lowerLayout->setContentsMargins(0, 0, 0, 0);
  lowerLayout->setSpacing(0);
  lowerLayout->addWidget(modes_);
  lowerLayout->addWidget(pages_, 1);

  auto* splitter = new QSplitter(Qt::Vertical, this);
  splitter->addWidget(list_);
  splitter->addWidget(lower);
  splitter->setSizes({260, 490});
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(splitter, 1);
  layout->addWidget(status_);
  layout->addWidget(buttons);

  connect(list_, &QTreeWidget::itemSelectionChanged, this, &FileHistoryWindowController::selectionChanged);
  connect(modes_, &QTabBar::currentChanged, this, &FileHistoryWindowController::selectionChanged);
  connect(content_, &FileContentView::loadLargeRequested, this, [this] { showFile(true); });
  connect(list_, &QTreeWidget::customContextMenuRequested, this, &FileHistoryWindowController::showMenu);
  connect(list_, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item) {
    if (actions_.selectRevision) actions_.selectRevision(item->data(ShaColumn, ShaRole).toString());
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

bool FileHistoryWindowController::isFolder() const { return GetFileHistoryGitCommand::isFolder(path_); }

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
                           const bool folder = guard->isFolder();
                           const bool dark = guard->list_->palette().color(QPalette::Base).lightness() < 128;
                           // Added at once: one by one, a folder's thousands of commits take long.
                           QList<QTreeWidgetItem*> items;
                           for (size_t row = 0; row < guard->history_.size(); ++row) {
                             const RevisionWithFiles& entry = guard->history_[row];
                             const Revision& revision = *entry.revision;
                             auto* item = new QTreeWidgetItem;
                             items << item;
                             item->setData(SubjectColumn, RowRole, static_cast<int>(row));
                             item->setData(SubjectColumn, FileRole, -1);
                             item->setText(SubjectColumn, revision.message());
                             item->setText(AuthorColumn, revision.author());
                             item->setText(DateColumn, CommitListModel::relativeDate(revision.authorDate(), now));
                             item->setToolTip(DateColumn, QLocale().toString(revision.authorDate().toLocalTime(), QLocale::LongFormat));
                             item->setText(ShaColumn, revision.sha().toString().left(7));
                             item->setData(ShaColumn, ShaRole, revision.sha().toString());
                             if (!folder) continue;
                             for (size_t index = 0; index < entry.changedFiles.size(); ++index) {
                               const ChangedFile& file = *entry.changedFiles[index];
                               auto* child = new QTreeWidgetItem(item);
                               const QString name = file.oldPath ? QStringLiteral("%1 → %2").arg(*file.oldPath, file.path) : file.path;
                               child->setText(SubjectColumn, ChangedFilesView::statusLetter(file.changeType, false) + QStringLiteral("  ") + name);
                               child->setForeground(SubjectColumn, ChangedFilesView::statusColor(file.changeType, false, dark));
                               child->setData(SubjectColumn, RowRole, static_cast<int>(row));
                               child->setData(SubjectColumn, FileRole, static_cast<int>(index));
                               child->setData(ShaColumn, ShaRole, revision.sha().toString());
                             }
                           }
                           guard->list_->addTopLevelItems(items);
                           for (QTreeWidgetItem* item : items) {
                             for (int i = 0; i < item->childCount(); ++i) item->child(i)->setFirstColumnSpanned(true);
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

QString FileHistoryWindowController::pathOf(const Side& side) const { return side.file ? side.file->path : pathAt(side.row); }

std::vector<FileHistoryWindowController::Side> FileHistoryWindowController::selectedSides() const {
  std::vector<Side> sides;
  std::vector<int> commitRows;
  for (QTreeWidgetItem* item : list_->selectedItems()) {
    const int row = item->data(SubjectColumn, RowRole).toInt();
    const int index = item->data(SubjectColumn, FileRole).toInt();
    if (index < 0) {
      commitRows.push_back(row);
    } else {
      sides.push_back({row, history_[static_cast<size_t>(row)].changedFiles[static_cast<size_t>(index)]});
    }
  }
  if (!isFolder()) {
    for (int row : commitRows) sides.push_back({row, nullptr});
  } else if (sides.empty() && commitRows.size() == 1) {
    // A commit that changed one file of the folder stands for that file.
    const auto& files = history_[static_cast<size_t>(commitRows.front())].changedFiles;
    if (files.size() == 1) sides.push_back({commitRows.front(), files.front()});
  } else if (!commitRows.empty()) {
    return {};
  }
  std::sort(sides.begin(), sides.end(), [](const Side& a, const Side& b) { return a.row < b.row; });
  if (sides.empty() || sides.size() > 2) return {};
  if (sides.size() == 2) {
    if (sides[0].row == sides[1].row) return {};
    // Two files of a folder compare only as versions of one file.
    const Side& newer = sides[0];
    const Side& older = sides[1];
    if (newer.file && older.file && newer.file->path != older.file->path && newer.file->oldPath != older.file->path) return {};
  }
  return sides;
}

bool FileHistoryWindowController::isShowingFile() const { return modes_->currentIndex() == 1; }

void FileHistoryWindowController::setShowingFile(bool file) { modes_->setCurrentIndex(file ? 1 : 0); }

void FileHistoryWindowController::showFile(bool loadLarge) {
  if (auto previous = showDiffJob_.lock()) previous->progress().cancel();
  const int request = ++diffRequest_;
  pages_->setCurrentWidget(content_);
  // The file of the item last clicked, as its commit has it.
  QTreeWidgetItem* item = list_->currentItem();
  if (!item || !item->isSelected()) {
    content_->showMessage(tr("Select a commit to see the file as it left it."));
    return;
  }
  const int row = item->data(SubjectColumn, RowRole).toInt();
  const int index = item->data(SubjectColumn, FileRole).toInt();
  const auto& files = history_[static_cast<size_t>(row)].changedFiles;
  ChangedFilePtr file;
  if (index >= 0) file = files[static_cast<size_t>(index)];
  else if (!isFolder() || files.size() == 1) file = files.empty() ? nullptr : files.front();
  if (isFolder() && !file) {
    content_->showMessage(tr("Select one of the commit's files."));
    return;
  }
  const QString path = file ? file->path : path_;
  if (file && file->changeType == ChangeType::deleted) {
    content_->showMessage(tr("'%1' was deleted by this commit.").arg(path));
    return;
  }
  content_->showMessage(tr("Loading file content..."));
  QPointer<FileHistoryWindowController> guard(this);
  const GitModule module = module_;
  const QString sha = history_[static_cast<size_t>(row)].revision->sha().toString();
  auto job = Job::make(QStringLiteral("Load file content"), Job::Show::none(), Job::ProgressType::infinite,
                       [guard, module, sha, path, request, loadLarge](JobProgress& progress) {
                         auto result = GetRevisionFileContentGitCommand::execute(module, sha, path);
                         if (progress.isCanceled()) return;
                         postQueuedCall(qApp, [guard, request, loadLarge, result = std::move(result)] {
                           if (!guard || guard->diffRequest_ != request) return;
                           if (result) {
                             guard->content_->showContent(result.value(), loadLarge);
                           } else {
                             guard->content_->showMessage(tr("The file could not be read: %1").arg(describe(result.error())));
                           }
                           Q_EMIT guard->fileShown();
                         });
                       });
  showDiffJob_ = job;
  if (queue_) queue_->schedule(job);
}

void FileHistoryWindowController::selectionChanged() {
  if (isShowingFile()) {
    showFile();
    return;
  }
  if (auto previous = showDiffJob_.lock()) previous->progress().cancel();
  ++diffRequest_;
  const std::vector<Side> sides = selectedSides();
  if (sides.empty() || !queue_) {
    const QList<QTreeWidgetItem*> selected = list_->selectedItems();
    const int count = static_cast<int>(selected.size());
    if (!isFolder()) {
      selectionCount_->setText(selectedCountText(count));
    } else {
      // A folder's single commit needs a file chosen, not a count.
      const bool files = std::any_of(selected.begin(), selected.end(),
                                     [](QTreeWidgetItem* item) { return item->data(SubjectColumn, FileRole).toInt() >= 0; });
      selectionCount_->setText(count < 2 ? QString() : files ? tr("%1 files selected").arg(count) : selectedCountText(count));
    }
    pages_->setCurrentIndex(0);
    return;
  }
  // The newer commit is higher in the list; one commit alone is compared with its parent.
  const RevisionPtr newer = history_[static_cast<size_t>(sides.front().row)].revision;
  auto file = std::make_shared<ChangedFile>();
  file->path = pathOf(sides.front());
  file->changeType = ChangeType::modified;
  file->tracked = true;
  std::optional<QString> other;
  if (sides.size() == 2) {
    other = history_[static_cast<size_t>(sides.back().row)].revision->sha().toString();
    const QString olderPath = pathOf(sides.back());
    if (olderPath != file->path) file->oldPath = olderPath;
  } else {
    if (sides.front().file) {
      file->oldPath = sides.front().file->oldPath;
    } else if (const auto& files = history_[static_cast<size_t>(sides.front().row)].changedFiles; !files.empty()) {
      file->oldPath = files.front()->oldPath;
    }
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
  const int row = item->data(SubjectColumn, RowRole).toInt();
  const int index = item->data(SubjectColumn, FileRole).toInt();
  const QString sha = item->data(ShaColumn, ShaRole).toString();
  ChangedFilePtr file;
  if (index >= 0) file = history_[static_cast<size_t>(row)].changedFiles[static_cast<size_t>(index)];
  const QString path = file ? file->path : pathAt(row);
  QMenu menu(this);
  menu.addAction(tr("Show Commit in History"), this, [this, sha] {
    if (actions_.selectRevision) actions_.selectRevision(sha);
  });
  // A folder's commit has no one file to blame, and a deleted file has no lines left.
  QAction* blame = menu.addAction(tr("Blame..."), this, [this, sha, path] {
    if (actions_.blame) actions_.blame(sha, path);
  });
  blame->setEnabled((!isFolder() || file) && !(file && file->changeType == ChangeType::deleted));
  menu.addSeparator();
  menu.addAction(tr("Copy SHA"), this, [sha] { QApplication::clipboard()->setText(sha); });
  menu.exec(list_->viewport()->mapToGlobal(position));
}
