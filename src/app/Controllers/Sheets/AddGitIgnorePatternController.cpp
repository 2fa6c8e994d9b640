#include "Controllers/Sheets/AddGitIgnorePatternController.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "Controllers/QueuedWork.h"
#include "Git/Commands/WorkingDirectory/IgnorePatternGitCommand.h"

AddGitIgnorePatternController::AddGitIgnorePatternController(GitModule module, const QString& initialPattern, QWidget* parent)
    : JelvSheetController(parent), module_(std::move(module)) {
  setWindowTitle(QStringLiteral("Add files to .gitignore"));
  messageLabel()->setText(QStringLiteral("Add files to .gitignore"));
  informativeLabel()->setText(QStringLiteral("The pattern is added as a new line of the repository's .gitignore."));
  informativeLabel()->show();
  pattern_ = new QLineEdit(initialPattern, this);
  pattern_->setPlaceholderText(QStringLiteral("Pattern, such as *.log or build/"));
  previewLabel_ = new QLabel(this);
  preview_ = new QListWidget(this);
  preview_->setMinimumSize(440, 200);
  preview_->setSelectionMode(QAbstractItemView::NoSelection);
  preview_->setFocusPolicy(Qt::NoFocus);
  contentLayout()->addWidget(pattern_);
  contentLayout()->addWidget(previewLabel_);
  contentLayout()->addWidget(preview_, 1);
  submitButton()->setText(QStringLiteral("Add"));

  // Typing quickly runs one preview, not one per key.
  previewTimer_.setSingleShot(true);
  previewTimer_.setInterval(150);
  connect(&previewTimer_, &QTimer::timeout, this, &AddGitIgnorePatternController::startPreview);
  connect(pattern_, &QLineEdit::textChanged, this, [this] {
    validate();
    previewTimer_.start();
  });
  previewTimer_.start();
}

void AddGitIgnorePatternController::validate(bool) {
  submitButton()->setEnabled(!isOperationInProgress() && !pattern_->text().trimmed().isEmpty());
}

void AddGitIgnorePatternController::startPreview() {
  const int generation = ++generation_;
  const QString pattern = pattern_->text().trimmed();
  if (pattern.isEmpty()) {
    preview_->clear();
    previewLabel_->setText(QString());
    Q_EMIT previewUpdated();
    return;
  }
  const std::shared_ptr<JobQueue> queue = jobQueue();
  if (!queue) return;
  const GitModule module = module_;
  runQueued<GitResult<QStringList>>(
      queue, this, QStringLiteral("Preview ignore pattern"), Job::Show::none(),
      [module, pattern](JobProgress&) { return IgnorePatternGitCommand::preview(module, pattern); },
      [this, generation](const GitResult<QStringList>& result) {
        if (generation != generation_) return;
        preview_->clear();
        if (result) {
          preview_->addItems(result.value());
          previewLabel_->setText(result.value().isEmpty()     ? QStringLiteral("The pattern matches no file.")
                                 : result.value().size() == 1 ? QStringLiteral("1 file will be ignored:")
                                                              : QStringLiteral("%1 files will be ignored:").arg(result.value().size()));
        } else {
          previewLabel_->setText(describe(result.error()));
        }
        Q_EMIT previewUpdated();
      });
}

void AddGitIgnorePatternController::submit() {
  const QString pattern = pattern_->text().trimmed();
  if (pattern.isEmpty()) return;
  const GitModule module = module_;
  runSheetJob(QStringLiteral("Ignore '%1'").arg(pattern), QStringLiteral("Adding to .gitignore…"),
              [module, pattern](JobProgress&) { return IgnorePatternGitCommand::append(module, pattern); });
}
