#include "Controllers/MergeConflicts/MergeConflictViewController.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "Controllers/QueuedWork.h"
#include "Git/Commands/Merge/GetUnmergedFilesGitCommand.h"
#include "Git/Commands/Merge/ResolveConflictGitCommand.h"
#include "Git/Merge/ExternalMerge.h"
#include "Models/ChangedFile.h"
#include "Services/MergeTool.h"
#include "Services/Preferences.h"

MergeConflictViewController::MergeConflictViewController(GitModule module, QString path, QWidget* parent)
    : JelvSheetController(parent), module_(std::move(module)), path_(std::move(path)) {
  setObjectName(QStringLiteral("mergeConflictViewSheet"));
  setWindowTitle(QStringLiteral("Select version to resolve with"));
  messageLabel()->setText(QStringLiteral("Select version to resolve with"));
  informativeLabel()->setText(path_);
  informativeLabel()->show();
  localLabel_ = new QLabel(this);
  remoteLabel_ = new QLabel(this);
  localButton_ = new QPushButton(QStringLiteral("Choose 'Local'"), this);
  localButton_->setObjectName(QStringLiteral("chooseLocalButton"));
  remoteButton_ = new QPushButton(QStringLiteral("Choose 'Remote'"), this);
  remoteButton_->setObjectName(QStringLiteral("chooseRemoteButton"));
  editorButton_ = new QPushButton(QStringLiteral("Merge in Jelv"), this);
  editorButton_->setObjectName(QStringLiteral("mergeInJelvButton"));
  toolButton_ = new QPushButton(this);
  toolButton_->setObjectName(QStringLiteral("mergeToolButton"));
  auto* sides = new QHBoxLayout;
  auto* localColumn = new QVBoxLayout;
  localColumn->addWidget(localLabel_);
  localColumn->addWidget(localButton_);
  auto* remoteColumn = new QVBoxLayout;
  remoteColumn->addWidget(remoteLabel_);
  remoteColumn->addWidget(remoteButton_);
  sides->addLayout(localColumn);
  sides->addLayout(remoteColumn);
  contentLayout()->addLayout(sides);
  auto* merges = new QHBoxLayout;
  merges->addWidget(editorButton_);
  merges->addWidget(toolButton_);
  contentLayout()->addLayout(merges);
  for (QPushButton* button : {localButton_, remoteButton_, editorButton_, toolButton_}) button->setEnabled(false);
  toolButton_->hide();
  submitButton()->hide();
  connect(localButton_, &QPushButton::clicked, this, [this] { choose(UnmergedFileVersionType::local); });
  connect(remoteButton_, &QPushButton::clicked, this, [this] { choose(UnmergedFileVersionType::remote); });
  connect(toolButton_, &QPushButton::clicked, this, [this] { merge(); });
  connect(editorButton_, &QPushButton::clicked, this, [this] {
    const auto open = openEditor;
    endWithCancel();
    if (open) open();
  });
}

void MergeConflictViewController::showEvent(QShowEvent* event) {
  JelvSheetController::showEvent(event);
  if (!refreshed_) refresh();
}

void MergeConflictViewController::refresh() {
  refreshed_ = true;
  const std::shared_ptr<JobQueue> queue = jobQueue();
  if (!queue) return;
  setStatus(Status::busy, QStringLiteral("Reading the conflict…"));
  const GitModule module = module_;
  runQueued<GitResult<UnmergedFileList>>(
      queue, this, QStringLiteral("Read unmerged files"), Job::Show::none(),
      [module](JobProgress&) { return GetUnmergedFilesGitCommand::execute(module); },
      [this](const GitResult<UnmergedFileList>& result) {
        if (result.isFailure()) {
          endWithError(result.error());
          return;
        }
        for (const UnmergedFile& file : result.value()) {
          if (file.path == path_) {
            showFile(file);
            return;
          }
        }
        endWithError(Error::Generic{QStringLiteral("'%1' has no conflict any more.").arg(path_)});
      });
}

void MergeConflictViewController::showFile(const UnmergedFile& file) {
  file_ = file;
  setStatus(Status::none);
  localLabel_->setText(QStringLiteral("Local: (") + ChangedFile::changeTypeName(file.localChangeType) + QStringLiteral(")"));
  remoteLabel_->setText(QStringLiteral("Remote: (") + ChangedFile::changeTypeName(file.remoteChangeType) + QStringLiteral(")"));
  const bool localDeleted = !file.localVersion;
  const bool remoteDeleted = !file.remoteVersion;
  localButton_->setText(localDeleted ? QStringLiteral("Delete file") : QStringLiteral("Choose 'Local'"));
  remoteButton_->setText(remoteDeleted ? QStringLiteral("Delete file") : QStringLiteral("Choose 'Remote'"));
  localButton_->setEnabled(true);
  remoteButton_->setEnabled(true);
  const bool mergeable = !localDeleted && !remoteDeleted;
  editorButton_->setVisible(mergeable);
  editorButton_->setEnabled(mergeable);
  if (mergeable) {
    const auto tool = MergeTool::activeTool(true, Preferences::shared());
    if (tool.index() == 0) {
      toolButton_->setText(QStringLiteral("Merge in ") + std::get<0>(tool).tool.name());
      toolButton_->setEnabled(true);
      toolButton_->setToolTip(QString());
    } else {
      toolButton_->setText(QStringLiteral("Merge in outside tool"));
      toolButton_->setEnabled(false);
      toolButton_->setToolTip(std::get<1>(tool));
    }
    toolButton_->show();
  }
  Q_EMIT loaded();
}

void MergeConflictViewController::choose(UnmergedFileVersionType version) {
  if (!file_) return;
  const GitModule module = module_;
  const UnmergedFile file = *file_;
  const bool deletes = version == UnmergedFileVersionType::local ? !file.localVersion : !file.remoteVersion;
  for (QPushButton* button : {localButton_, remoteButton_, editorButton_, toolButton_}) button->setEnabled(false);
  runSheetJob(QStringLiteral("Resolve conflict in '%1'").arg(file.path), deletes ? QStringLiteral("Deleting…") : QStringLiteral("Resolving…"),
              [module, file, version](JobProgress&) { return ResolveConflictGitCommand::execute(module, file, version); });
}

void MergeConflictViewController::merge() {
  if (!file_) return;
  const auto tool = MergeTool::activeTool(true, Preferences::shared());
  if (tool.index() != 0) {
    setStatus(Status::warning, std::get<1>(tool));
    return;
  }
  const MergeTool::Launch launch = std::get<0>(tool);
  const GitModule module = module_;
  const UnmergedFile file = *file_;
  for (QPushButton* button : {localButton_, remoteButton_, editorButton_, toolButton_}) button->setEnabled(false);
  runSheetJob(QStringLiteral("Merge '%1' in %2").arg(file.path, launch.tool.name()),
              QStringLiteral("Waiting for %1…").arg(launch.tool.name()),
              [module, file, launch](JobProgress&) { return ExternalMerge::merge(module, file, launch); });
}

void MergeConflictViewController::validate(bool) {}

Subdomain MergeConflictViewController::changedSubdomains() const { return Subdomain::repositoryStatus(); }
