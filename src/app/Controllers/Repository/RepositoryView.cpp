#include "Controllers/Repository/RepositoryView.h"

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QPointer>
#include <QShortcut>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "Controllers/ActivityManagerWindow.h"
#include "Controllers/CommitList/CommitListView.h"
#include "Controllers/Repository/NotificationBar.h"
#include "Controllers/RevisionDetails/RevisionHeaderView.h"
#include "Controllers/Sidebar/RepositorySidebar.h"
#include "Controls/ChangedFilesView.h"
#include "Controls/Diff/DiffTextView.h"
#include "Controls/RepositoryStatusBar.h"
#include "Git/Commands/RepositoryStatus/GetRevisionChangedFilesGitCommand.h"
#include "Git/Commands/Revision/GetRevisionDetailsGitCommand.h"
#include "Git/Commands/Revision/GetRevisionFileChangesGitCommand.h"
#include "Git/Commands/WorkingDirectory/GetWorkingDirectoryFileChangesGitCommand.h"
#include "Models/FileContent/BinaryDiffFileContent.h"
#include "Models/FileContent/DiffSettings.h"
#include "Models/FileContent/LfsFileContent.h"
#include "Models/FileContent/SubmoduleDiffFileContent.h"
#include "Models/FileContent/TextDiffFileContent.h"
#include "Models/FileContent/TextDisplayDecision.h"
#include "Models/FileContent/UnknownBinaryFileContent.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Models/LocalBranch.h"
#include "Models/PatchParser.h"
#include "Models/RepositoryStateNotification.h"
#include "Models/XPatch.h"
#include "Services/Preferences.h"

namespace {

struct CommitContent {
  GitResult<RevisionDetails> details = Error::Unknown{};
  GitResult<ChangedFileList> files = Error::Unknown{};
};

QString sizeText(const std::optional<qint64>& size) {
  return size ? QLocale().formattedDataSize(*size) : QObject::tr("none");
}

QString lfsText(const std::optional<LfsPointer>& pointer) {
  if (!pointer) return QObject::tr("none");
  return QStringLiteral("%1 (%2)").arg(pointer->sha.left(12), QLocale().formattedDataSize(pointer->size));
}

// Resolves a change into what the pane shows; runs on the job's thread.
DiffContent diffContentFrom(const GitResult<DiffFileContentPtr>& result, XFilePatch::Location location, bool loadLarge) {
  if (!result) {
    if (result.isError<Error::Canceled>()) return {};
    return {{}, describe(result.error())};
  }
  const DiffFileContentPtr& content = result.value();
  DiffContent out;
  switch (content->kind()) {
    case DiffFileContent::Kind::text: {
      const auto& text = static_cast<const TextDiffFileContent&>(*content);
      if (text.diffString.trimmed().isEmpty()) return {{}, QObject::tr("No changes to show.")};
      const TextDisplayDecision decision =
          TextDisplayDecision::forDiff(text.diffString, content->changedFile ? content->changedFile->path : QString(), location, loadLarge);
      if (decision.kind == TextDisplayDecision::Kind::tooLarge) {
        out.message = TextDisplayDecision::fallbackTitle;
        out.offerLoadLarge = true;
        return out;
      }
      if (decision.kind != TextDisplayDecision::Kind::render || !decision.patch || decision.patch->files.empty()) {
        return {{}, QObject::tr("The diff could not be read.")};
      }
      const XFilePatch& file = decision.patch->files.front();
      if (file.chunks.empty()) return {{}, file.oldFileMode != file.newFileMode ? QObject::tr("Only the file mode changed.") : QObject::tr("No text changes.")};
      out.rows = unifiedDiffRows(file);
      return out;
    }
    case DiffFileContent::Kind::binary: {
      const auto& images = static_cast<const BinaryDiffFileContent&>(*content);
      if (images.old) out.oldImage = QImage::fromData(*images.old);
      if (images.new_) out.newImage = QImage::fromData(*images.new_);
      out.isImage = true;
      return out;
    }
    case DiffFileContent::Kind::lfs: {
      const auto& lfs = static_cast<const LfsFileContent&>(*content);
      out.message = QObject::tr("Git LFS file\nBefore: %1\nAfter: %2").arg(lfsText(lfs.old), lfsText(lfs.current));
      return out;
    }
    case DiffFileContent::Kind::unknownBinary: {
      const auto& binary = static_cast<const UnknownBinaryFileContent&>(*content);
      out.message = QObject::tr("Binary file\nBefore: %1\nAfter: %2").arg(sizeText(binary.oldSize), sizeText(binary.newSize));
      if (auto tip = TextDisplayDecision::notLfsTip(binary.newSize.value_or(0))) out.message += QStringLiteral("\n\n") + *tip;
      return out;
    }
    case DiffFileContent::Kind::submodule: {
      const auto& sub = static_cast<const SubmoduleDiffFileContent&>(*content);
      auto describeRevision = [](const RevisionDetails& details) {
        if (details.sha.isEmpty()) return QObject::tr("none");
        return QStringLiteral("%1 %2").arg(details.sha.left(10), details.message.section(QLatin1Char('\n'), 0, 0));
      };
      out.message = QObject::tr("Submodule %1\nBefore: %2\nAfter: %3")
                        .arg(sub.submodule.path, describeRevision(sub.oldRevision), describeRevision(sub.newRevision));
      if (sub.submoduleChangesCount > 0) out.message += QObject::tr("\n%n changed file(s) inside", nullptr, sub.submoduleChangesCount);
      return out;
    }
  }
  return out;
}


}  // namespace

template <typename T>
std::shared_ptr<Job> RepositoryView::run(const QString& name, int show, std::function<T(JobProgress&)> work, std::function<void(T)> done) {
  QPointer<RepositoryView> guard(this);
  auto job = Job::make(name, Job::Show{show}, Job::ProgressType::infinite, [guard, work = std::move(work), done = std::move(done)](JobProgress& progress) {
    T result = work(progress);
    if (progress.isCanceled()) return;
    QMetaObject::invokeMethod(
        qApp, [guard, done, result = std::move(result)]() mutable {
          if (guard) done(std::move(result));
        },
        Qt::QueuedConnection);
  });
  queue_->schedule(job);
  return job;
}

RepositoryView::RepositoryView(const GitModule& module, std::shared_ptr<JobQueue> queue, QWidget* parent)
    : QWidget(parent), module_(module), queue_(std::move(queue)) {
  sidebar_ = new RepositorySidebar(this);
  notificationBar_ = new NotificationBar(this);
  commitList_ = new CommitListView(this);
  header_ = new RevisionHeaderView(this);
  revisionFiles_ = new ChangedFilesView(this);
  localFiles_ = new ChangedFilesView(this);
  diff_ = new DiffTextView(this);
  diffMessage_ = new QLabel(tr("Select a file to see its changes."), this);
  diffMessage_->setAlignment(Qt::AlignCenter);
  diffMessage_->setWordWrap(true);
  messagePage_ = new QWidget(this);
  auto* messageLayout = new QVBoxLayout(messagePage_);
  messageLayout->addStretch();
  messageLayout->addWidget(diffMessage_);
  loadLargeButton_ = new QPushButton(TextDisplayDecision::fallbackButton, messagePage_);
  loadLargeButton_->hide();
  messageLayout->addWidget(loadLargeButton_, 0, Qt::AlignHCenter);
  messageLayout->addStretch();
  connect(loadLargeButton_, &QPushButton::clicked, this, [this] {
    loadLargeDiff_ = true;
    if (pages_->currentIndex() == 0) {
      loadRevisionDiff(revisionFiles_->currentFile());
    } else {
      loadWorkingTreeDiff(localFiles_->currentFile());
    }
  });
  imagePage_ = new QWidget(this);
  auto* imageLayout = new QHBoxLayout(imagePage_);
  oldImage_ = new QLabel(imagePage_);
  newImage_ = new QLabel(imagePage_);
  for (QLabel* label : {oldImage_, newImage_}) {
    label->setAlignment(Qt::AlignCenter);
    label->setFrameShape(QFrame::StyledPanel);
    imageLayout->addWidget(label, 1);
  }
  diffStack_ = new QStackedWidget(this);
  diffStack_->addWidget(messagePage_);
  diffStack_->addWidget(diff_);
  diffStack_->addWidget(imagePage_);

  // History page: list above, details below (header, files | diff).
  auto* filesAndDiff = new QSplitter(Qt::Horizontal);
  filesAndDiff->addWidget(revisionFiles_);
  auto* diffHolder = new QWidget;
  auto* diffHolderLayout = new QVBoxLayout(diffHolder);
  diffHolderLayout->setContentsMargins(0, 0, 0, 0);
  filesAndDiff->addWidget(diffHolder);
  filesAndDiff->setStretchFactor(1, 3);
  auto* details = new QSplitter(Qt::Vertical);
  details->addWidget(header_);
  details->addWidget(filesAndDiff);
  details->setStretchFactor(1, 3);
  details->setSizes({110, 320});
  auto* history = new QSplitter(Qt::Vertical);
  history->addWidget(commitList_);
  history->addWidget(details);
  history->setStretchFactor(0, 3);
  history->setStretchFactor(1, 2);
  history->setSizes({470, 330});

  // Local changes page: files | diff.
  auto* local = new QSplitter(Qt::Horizontal);
  local->addWidget(localFiles_);
  auto* localDiffHolder = new QWidget;
  auto* localDiffLayout = new QVBoxLayout(localDiffHolder);
  localDiffLayout->setContentsMargins(0, 0, 0, 0);
  local->addWidget(localDiffHolder);
  local->setStretchFactor(1, 3);

  pages_ = new QStackedWidget(this);
  pages_->addWidget(history);
  pages_->addWidget(local);
  // One diff pane, moved to the page in front.
  connect(pages_, &QStackedWidget::currentChanged, this, [this, diffHolderLayout, localDiffLayout](int page) {
    (page == 0 ? diffHolderLayout : localDiffLayout)->addWidget(diffStack_);
  });
  diffHolderLayout->addWidget(diffStack_);

  auto* right = new QWidget;
  auto* rightLayout = new QVBoxLayout(right);
  rightLayout->setContentsMargins(0, 0, 0, 0);
  rightLayout->setSpacing(0);
  rightLayout->addWidget(notificationBar_);
  rightLayout->addWidget(pages_, 1);

  auto* main = new QSplitter(Qt::Horizontal, this);
  main->addWidget(sidebar_);
  main->addWidget(right);
  main->setStretchFactor(1, 4);
  main->setSizes({230, 900});

  statusBar_ = new RepositoryStatusBar(queue_, [this] { return repositoryLine(); }, this);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(main, 1);
  layout->addWidget(statusBar_);

  connect(commitList_, &CommitListView::currentRevisionChanged, this, [this](RevisionPtr revision) { loadCommit(revision); });
  connect(revisionFiles_, &ChangedFilesView::currentFileChanged, this, [this](ChangedFilePtr file) { loadRevisionDiff(file); });
  connect(localFiles_, &ChangedFilesView::currentFileChanged, this, [this](ChangedFilePtr file) { loadWorkingTreeDiff(file); });
  connect(header_, &RevisionHeaderView::parentRequested, this, [this](const QString& sha) {
    if (auto parsed = Sha::fromHex(sha)) commitList_->selectSha(*parsed);
  });
  connect(sidebar_, &RepositorySidebar::localChangesSelected, this, &RepositoryView::showLocalChanges);
  connect(sidebar_, &RepositorySidebar::allCommitsSelected, this, &RepositoryView::showHistory);
  connect(sidebar_, &RepositorySidebar::commitRequested, this, [this](const QString& sha) {
    showHistory();
    if (auto parsed = Sha::fromHex(sha)) commitList_->selectSha(*parsed);
  });
  connect(statusBar_, &RepositoryStatusBar::activityRequested, this, &RepositoryView::showActivityManager);

  auto* refreshShortcut = new QShortcut(QKeySequence(QStringLiteral("Ctrl+R")), this);
  connect(refreshShortcut, &QShortcut::activated, this, &RepositoryView::refresh);
  auto* findShortcut = new QShortcut(QKeySequence::Find, this);
  connect(findShortcut, &QShortcut::activated, this, [this] { commitList_->setFocus(); });

  qApp->installEventFilter(this);
  refresh();
}

RepositoryView::~RepositoryView() {
  qApp->removeEventFilter(this);
  for (const auto& weak : {refreshJob_, commitJob_, diffJob_}) {
    if (auto job = weak.lock()) job->progress().cancel();
  }
}

bool RepositoryView::eventFilter(QObject* watched, QEvent* event) {
  // The repository may have changed while another program had the focus.
  if (event->type() == QEvent::ApplicationActivate && loaded_ && isVisible()) refreshStatus();
  return QWidget::eventFilter(watched, event);
}

QString RepositoryView::repositoryLine() const {
  const QString folder = QDir(module_.repositoryPath).dirName();
  if (!loaded_ || !snapshot_) return QStringLiteral("%1: loading...").arg(folder);
  const auto& active = snapshot_->graph->references.activeBranch;
  if (!active) return QStringLiteral("%1: detached HEAD").arg(folder);
  return QStringLiteral("%1: %2").arg(folder, active->name);
}

void RepositoryView::refresh() {
  if (auto previous = refreshJob_.lock()) previous->progress().cancel();
  RevisionGraphOptions options;
  auto& prefs = Preferences::shared();
  options.hideRemoteBranches = prefs.boolean(QStringLiteral("hideRemoteBranches"));
  options.hideTags = prefs.boolean(QStringLiteral("hideTags"));
  options.hideStashes = prefs.boolean(QStringLiteral("hideStashes"));
  options.showFirstParent = prefs.boolean(QStringLiteral("showFirstParent"));
  const GitModule module = module_;
  refreshJob_ = run<GitResult<RepositorySnapshot>>(
      QStringLiteral("Refresh"), Job::Show::inActivityManagerBit | Job::Show::inStatusBarBit,
      [module, options](JobProgress& progress) { return RepositorySnapshotLoader::load(module, progress, options); },
      [this](GitResult<RepositorySnapshot> result) {
        if (!result) {
          Q_EMIT loadFailed(describe(result.error()));
          showDiffMessage(tr("The repository could not be read: %1").arg(describe(result.error())));
          return;
        }
        applySnapshot(std::move(result).value());
      });
}

void RepositoryView::refreshStatus() {
  if (!snapshot_) return;
  const GitModule module = module_;
  const ReferenceList references = snapshot_->graph->references.all;
  const SubmoduleList submodules = snapshot_->submodules;
  run<GitResult<RepositoryStatus>>(
      QStringLiteral("Status"), 0,
      [module, references, submodules](JobProgress& progress) {
        return RepositorySnapshotLoader::loadStatus(module, references, submodules, progress);
      },
      [this](GitResult<RepositoryStatus> result) {
        if (result) applyStatus(std::move(result).value());
      });
}

void RepositoryView::applySnapshot(RepositorySnapshot snapshot) {
  const bool first = !loaded_;
  loaded_ = true;
  snapshot_ = std::move(snapshot);
  commitList_->setSource(snapshot_->graph);
  applyStatus(snapshot_->status);
  if (first && commitList_->commitModel()->rowCount() > 0 && !commitList_->currentRevision()) {
    const auto head = snapshot_->graph->references.head;
    const auto headSha = head ? Sha::fromHex(*head) : std::nullopt;
    if (!headSha || !commitList_->selectSha(*headSha)) commitList_->selectRow(0);
  }
  Q_EMIT snapshotLoaded();
}

void RepositoryView::applyStatus(RepositoryStatus status) {
  if (!snapshot_) return;
  snapshot_->status = std::move(status);
  RepositorySidebar::Content content;
  content.references = snapshot_->graph->references;
  content.stashes = snapshot_->graph->stashes;
  content.aheadBehind = snapshot_->aheadBehind;
  content.localChangesCount = snapshot_->status.changedFilesCount;
  for (const auto& submodule : snapshot_->submodules) content.submodules << submodule.path;
  sidebar_->setContent(content);
  notificationBar_->setNotification(RepositoryStateNotification::make(snapshot_->status.repositoryState));
  localFiles_->setFiles(snapshot_->status.changedFiles);
}

void RepositoryView::showLocalChanges() {
  pages_->setCurrentIndex(1);
  if (auto file = localFiles_->currentFile()) {
    loadWorkingTreeDiff(file);
  } else {
    showDiffMessage(snapshot_ && snapshot_->status.changedFiles.empty() ? tr("No local changes") : tr("Select a file to see its changes."));
  }
}

void RepositoryView::showHistory() {
  pages_->setCurrentIndex(0);
  if (auto file = revisionFiles_->currentFile()) loadRevisionDiff(file);
}

void RepositoryView::showActivityManager() {
  if (!activity_) activity_ = new ActivityManagerWindow(queue_, this);
  activity_->show();
  activity_->raise();
  activity_->activateWindow();
}

void RepositoryView::loadCommit(const RevisionPtr& revision) {
  if (auto previous = commitJob_.lock()) previous->progress().cancel();
  revisionFiles_->setFiles({});
  if (!revision) {
    header_->clear();
    return;
  }
  selectedSha_ = revision->sha().toString();
  header_->showLoading(selectedSha_);
  showDiffMessage(tr("Select a file to see its changes."));
  const GitModule module = module_;
  const QString sha = selectedSha_;
  const SubmoduleList submodules = snapshot_ ? snapshot_->submodules : SubmoduleList{};
  commitJob_ = run<CommitContent>(
      QStringLiteral("Load commit"), 0,
      [module, sha, submodules](JobProgress&) {
        CommitContent content;
        content.details = GetRevisionDetailsGitCommand::execute(module, sha);
        content.files = GetRevisionChangedFilesGitCommand::executeInternal(module, sha, std::nullopt, submodules);
        return content;
      },
      [this, sha](CommitContent content) {
        if (sha != selectedSha_) return;
        if (content.details) {
          header_->setDetails(content.details.value());
        } else {
          header_->showError(describe(content.details.error()));
        }
        if (content.files) {
          revisionFiles_->setFiles(content.files.value());
          if (!content.files.value().empty()) revisionFiles_->setCurrentItem(revisionFiles_->topLevelItem(0));
        }
        Q_EMIT commitDetailsLoaded();
      });
}

void RepositoryView::loadRevisionDiff(const ChangedFilePtr& file) {
  if (auto previous = diffJob_.lock()) previous->progress().cancel();
  // The diff pane belongs to the page in front.
  if (!file || selectedSha_.isEmpty() || pages_->currentIndex() != 0) return;
  const RevisionPtr revision = commitList_->currentRevision();
  std::optional<QString> parent;
  if (revision && !revision->parents().empty()) parent = revision->parents().front().toString();
  const GitModule module = module_;
  const QString sha = selectedSha_;
  const DiffSettings settings = DiffSettings::fromPreferences();
  const bool loadLarge = std::exchange(loadLargeDiff_, false);
  diffJob_ = run<DiffContent>(
      QStringLiteral("Load diff"), 0,
      [module, sha, parent, file, settings, loadLarge](JobProgress& progress) {
        return diffContentFrom(GetRevisionFileChangesGitCommand::execute(module, sha, parent, file, settings, &progress),
                               XFilePatch::Location::revision, loadLarge);
      },
      [this, file](DiffContent content) {
        if (revisionFiles_->currentFile() != file || pages_->currentIndex() != 0) return;
        showDiffContent(std::move(content));
        Q_EMIT diffLoaded();
      });
}

void RepositoryView::loadWorkingTreeDiff(const ChangedFilePtr& file) {
  if (auto previous = diffJob_.lock()) previous->progress().cancel();
  if (!file || pages_->currentIndex() != 1) return;
  const GitModule module = module_;
  const DiffSettings settings = DiffSettings::fromPreferences();
  const bool loadLarge = std::exchange(loadLargeDiff_, false);
  diffJob_ = run<DiffContent>(
      QStringLiteral("Load diff"), 0,
      [module, file, settings, loadLarge](JobProgress&) {
        return diffContentFrom(GetWorkingDirectoryFileChangesGitCommand::execute(module, file, false, settings),
                               file->staged ? XFilePatch::Location::staged : XFilePatch::Location::unstaged, loadLarge);
      },
      [this, file](DiffContent content) {
        if (localFiles_->currentFile() != file || pages_->currentIndex() != 1) return;
        showDiffContent(std::move(content));
        Q_EMIT diffLoaded();
      });
}

void RepositoryView::showDiffMessage(const QString& message) {
  diffMessage_->setText(message);
  loadLargeButton_->hide();
  diffStack_->setCurrentWidget(messagePage_);
}

void RepositoryView::showDiffContent(DiffContent content) {
  if (content.isImage) {
    auto showImage = [](QLabel* label, const std::optional<QImage>& image, const QString& missing) {
      if (image && !image->isNull()) {
        label->setPixmap(QPixmap::fromImage(image->width() > 480 ? image->scaledToWidth(480, Qt::SmoothTransformation) : *image));
      } else {
        label->setPixmap({});
        label->setText(missing);
      }
    };
    showImage(oldImage_, content.oldImage, tr("Created"));
    showImage(newImage_, content.newImage, tr("Deleted"));
    diffStack_->setCurrentWidget(imagePage_);
  } else if (!content.rows.empty()) {
    diff_->setRows(std::move(content.rows));
    diffStack_->setCurrentWidget(diff_);
  } else {
    showDiffMessage(content.message);
    loadLargeButton_->setVisible(content.offerLoadLarge);
  }
}

bool RepositoryView::isShowingImages() const { return diffStack_->currentWidget() == imagePage_; }
bool RepositoryView::isOfferingLargeDiff() const { return diffStack_->currentWidget() == messagePage_ && !loadLargeButton_->isHidden(); }
QString RepositoryView::diffMessage() const { return diffStack_->currentWidget() == messagePage_ ? diffMessage_->text() : QString(); }
QString RepositoryView::oldImageText() const { return oldImage_->text(); }
bool RepositoryView::hasNewImage() const { return !newImage_->pixmap().isNull(); }
