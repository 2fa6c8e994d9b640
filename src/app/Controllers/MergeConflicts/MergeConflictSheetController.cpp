#include "Controllers/MergeConflicts/MergeConflictSheetController.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QVBoxLayout>

#include "Controllers/MergeConflicts/MergeSourceTextView.h"
#include "Controllers/QueuedWork.h"
#include "Git/Commands/Merge/ResolveMergeConflictGitCommand.h"
#include "Git/Merge/LoadMergeConflict.h"
#include "Logging/AdvancedLogger.h"

namespace {
QWidget* pane(QLabel* title, QWidget* text, QWidget* parent) {
  auto* box = new QWidget(parent);
  auto* layout = new QVBoxLayout(box);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(4);
  layout->addWidget(title);
  layout->addWidget(text, 1);
  return box;
}
}  // namespace

MergeConflictSheetController::MergeConflictSheetController(GitModule module, QString path, QWidget* parent)
    : JelvSheetController(parent), module_(std::move(module)), path_(std::move(path)) {
  setObjectName(QStringLiteral("mergeConflictSheet"));
  setWindowTitle(QStringLiteral("Merge Conflicts"));
  messageLabel()->setText(path_);
  informativeLabel()->setText(QStringLiteral("Click lines of either side to take them into the result, or type in the result."));
  informativeLabel()->show();
  local_ = new MergeSourceTextView(MergeConflictPart::local, this);
  local_->setObjectName(QStringLiteral("localTextView"));
  result_ = new MergeTextView(MergeConflictPart::merged, this);
  result_->setObjectName(QStringLiteral("resultTextView"));
  remote_ = new MergeSourceTextView(MergeConflictPart::remote, this);
  remote_->setObjectName(QStringLiteral("remoteTextView"));
  localTitle_ = new QLabel(QStringLiteral("Local"), this);
  remoteTitle_ = new QLabel(QStringLiteral("Remote"), this);
  auto* splitter = new QSplitter(Qt::Horizontal, this);
  splitter->addWidget(pane(localTitle_, local_, splitter));
  splitter->addWidget(pane(new QLabel(QStringLiteral("Result"), this), result_, splitter));
  splitter->addWidget(pane(remoteTitle_, remote_, splitter));
  splitter->setChildrenCollapsible(false);
  contentLayout()->addWidget(splitter, 1);
  // The panes have the same rows: one scrolls them all.
  for (MergeTextView* view : {static_cast<MergeTextView*>(local_), result_, static_cast<MergeTextView*>(remote_)}) {
    for (MergeTextView* other : {static_cast<MergeTextView*>(local_), result_, static_cast<MergeTextView*>(remote_)}) {
      if (view != other) connect(view->verticalScrollBar(), &QScrollBar::valueChanged, other->verticalScrollBar(), &QScrollBar::setValue);
    }
  }
  submitButton()->setText(QStringLiteral("Save"));
  submitButton()->setEnabled(false);
  resize(1200, 720);
}

void MergeConflictSheetController::showEvent(QShowEvent* event) {
  JelvSheetController::showEvent(event);
  if (!refreshed_ && !controller_) refresh();
}

void MergeConflictSheetController::refresh() {
  refreshed_ = true;
  const std::shared_ptr<JobQueue> queue = jobQueue();
  if (!queue) return;
  setStatus(Status::busy, QStringLiteral("Reading the conflict…"));
  const GitModule module = module_;
  const QString path = path_;
  runQueued<GitResult<std::shared_ptr<MergeConflict>>>(
      queue, this, QStringLiteral("Read conflict of '%1'").arg(path), Job::Show::none(),
      [module, path](JobProgress&) { return LoadMergeConflict::execute(module, path); },
      [this](const GitResult<std::shared_ptr<MergeConflict>>& result) {
        if (result.isFailure()) {
          endWithError(result.error());
          return;
        }
        setStatus(Status::none);
        load(result.value());
      });
}

void MergeConflictSheetController::load(std::shared_ptr<MergeConflict> conflict) {
  controller_ = std::make_unique<SideBySideMergeController>(std::move(conflict));
  controller_->onRegenerated = [this](bool) { regenerated(); };
  for (MergeTextView* view : {static_cast<MergeTextView*>(local_), result_, static_cast<MergeTextView*>(remote_)}) {
    view->setController(controller_.get());
  }
  for (const auto& chunk : controller_->mergeConflict()->chunks) {
    if (chunk->kind() != MergeConflict::Chunk::Kind::conflict) continue;
    const auto& conflictChunk = static_cast<const MergeConflict::ConflictChunk&>(*chunk);
    localTitle_->setText(QStringLiteral("Local: ") + conflictChunk.localName.trimmed());
    remoteTitle_->setText(QStringLiteral("Remote: ") + conflictChunk.remoteName.trimmed());
    break;
  }
  regenerated();
  result_->setFocus();
  Q_EMIT loaded();
}

void MergeConflictSheetController::regenerated() {
  local_->reload();
  result_->reload();
  remote_->reload();
  validate();
}

void MergeConflictSheetController::validate(bool) {
  if (isOperationInProgress()) return;
  if (!controller_) {
    submitButton()->setEnabled(false);
    return;
  }
  const MergeConflict& conflict = *controller_->mergeConflict();
  setWindowTitle(conflict.title());
  const bool resolved = conflict.unresolvedConflictCount() == 0;
  messageLabel()->setText(path_ + QStringLiteral(" — ") + conflict.title());
  if (resolved) setStatus(Status::none);
  else setStatus(Status::warning, QStringLiteral("Every conflict needs a result before the file can be saved."));
  submitButton()->setEnabled(resolved);
}

void MergeConflictSheetController::submit() {
  if (!controller_ || !submitButton()->isEnabled()) return;
  const GitModule module = module_;
  const QString path = path_;
  const QString content = controller_->mergeConflict()->resultText();
  runSheetJob(QStringLiteral("Resolve conflict in '%1'").arg(path), QStringLiteral("Saving…"),
              [module, path, content](JobProgress&) { return ResolveMergeConflictGitCommand::execute(module, path, content); });
}

Subdomain MergeConflictSheetController::changedSubdomains() const { return Subdomain::repositoryStatus(); }
