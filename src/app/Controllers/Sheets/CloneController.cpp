#include "Controllers/Sheets/CloneController.h"

#include <QLabel>
#include <QVBoxLayout>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

#include "Git/Commands/Remotes/CloneGitCommand.h"
#include "Jobs/Job.h"
#include "Services/Preferences.h"

CloneController::CloneController(QString url, QWidget* parent) : JelvSheetController(parent) {
  setObjectName(QStringLiteral("cloneSheet"));
  setWindowTitle(QStringLiteral("Clone"));
  messageLabel()->setText(QStringLiteral("Clone a repository"));
  url_ = new QLineEdit(url, this);
  url_->setPlaceholderText(QStringLiteral("https://host/owner/repository.git or git@host:owner/repository.git"));
  url_->setMinimumWidth(460);
  destination_ = new QComboBox(this);
  destination_->setEditable(true);
  auto& preferences = Preferences::shared();
  QStringList folders = preferences.recentCloneDirectories();
  if (const auto source = preferences.defaultSourceFolder(); source && !folders.contains(*source)) folders << *source;
  if (folders.isEmpty()) folders << QDir::homePath();
  destination_->addItems(folders);
  auto* browse = new QPushButton(QStringLiteral("Choose…"), this);
  browse->setAutoDefault(false);
  auto* folderRow = new QHBoxLayout;
  folderRow->addWidget(destination_, 1);
  folderRow->addWidget(browse);
  name_ = new QLineEdit(this);
  progress_ = new QProgressBar(this);
  progress_->setRange(0, 100);
  progress_->hide();
  auto* form = new QFormLayout;
  form->addRow(QStringLiteral("Source URL:"), url_);
  form->addRow(QStringLiteral("Into folder:"), folderRow);
  form->addRow(QStringLiteral("Name:"), name_);
  contentLayout()->addLayout(form);
  contentLayout()->addWidget(progress_);
  submitButton()->setText(QStringLiteral("Clone"));
  name_->setText(CloneGitCommand::folderName(url));
  connect(url_, &QLineEdit::textChanged, this, [this](const QString& text) {
    if (!nameEdited_) name_->setText(CloneGitCommand::folderName(text));
    validate();
  });
  connect(name_, &QLineEdit::textEdited, this, [this] {
    nameEdited_ = true;
    validate();
  });
  connect(destination_, &QComboBox::currentTextChanged, this, [this] { validate(); });
  connect(browse, &QPushButton::clicked, this, &CloneController::chooseFolder);
  poll_ = new QTimer(this);
  poll_->setInterval(200);
  connect(poll_, &QTimer::timeout, this, [this] {
    if (auto job = runningJob()) {
      progress_->setValue(static_cast<int>(job->progress().progress()));
      if (!job->progress().message().isEmpty() && !job->progress().isCanceled()) setStatus(Status::busy, job->progress().message());
    }
  });
}

QString CloneController::destinationPath() const {
  return QDir::cleanPath(destination_->currentText().trimmed() + QLatin1Char('/') + name_->text().trimmed());
}

void CloneController::chooseFolder() {
  const QString folder = QFileDialog::getExistingDirectory(this, QStringLiteral("Clone into"), destination_->currentText());
  if (!folder.isEmpty()) destination_->setEditText(folder);
}

void CloneController::validate(bool) {
  if (isOperationInProgress()) return;
  std::optional<QString> problem;
  if (url_->text().trimmed().isEmpty()) {
    problem = QStringLiteral("Enter the URL of the repository");
  } else if (name_->text().trimmed().isEmpty() || name_->text().contains(QLatin1Char('/'))) {
    problem = QStringLiteral("Name the new folder");
  } else {
    problem = CloneGitCommand::destinationProblem(destinationPath());
  }
  if (problem && !url_->text().trimmed().isEmpty()) {
    setStatus(Status::warning, *problem);
  } else {
    setStatus(Status::none);
  }
  submitButton()->setEnabled(!problem);
}

void CloneController::submit() {
  if (!submitButton()->isEnabled()) return;
  const QString url = url_->text().trimmed();
  const QString target = destinationPath();
  auto& preferences = Preferences::shared();
  QStringList recent = preferences.recentCloneDirectories();
  recent.removeAll(destination_->currentText().trimmed());
  recent.prepend(destination_->currentText().trimmed());
  preferences.setRecentCloneDirectories(recent.mid(0, 10));
  progress_->setValue(0);
  progress_->show();
  poll_->start();
  clonedPath_ = target;
  runSheetJob(QStringLiteral("Clone '%1'").arg(url), QStringLiteral("cloning..."), [url, target](JobProgress& progress) -> GitVoidResult {
    const GitResult<QString> result = CloneGitCommand::execute(url, target, progress);
    if (!result) return result.error();
    return Unit{};
  });
}
