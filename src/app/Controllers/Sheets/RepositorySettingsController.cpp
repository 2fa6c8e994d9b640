#include "Controllers/Sheets/RepositorySettingsController.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

#include "Controllers/QueuedWork.h"
#include "Controllers/Sheets/ErrorWindowController.h"

RepositorySettingsController::RepositorySettingsController(GitModule module, QWidget* parent)
    : JelvSheetController(parent), module_(std::move(module)) {
  setWindowTitle(QStringLiteral("Repository Settings"));
  messageLabel()->setText(QStringLiteral("Repository Settings"));
  // The repository's own settings file is written here, on the main thread, once git's
  // configuration took the rest; connected before any opener, so that the opener reads
  // the file written.
  connect(this, &QDialog::finished, this, [this] {
    if (result().isSuccess() && loaded_ && submitted_) RepositoryCommitSettings::saveSigning(module_, *loaded_, *submitted_);
  });

  auto* identity = new QGroupBox(QStringLiteral("Identity for this repository"), this);
  auto* identityForm = new QFormLayout(identity);
  name_ = new QLineEdit(identity);
  email_ = new QLineEdit(identity);
  identityForm->addRow(QStringLiteral("Full name:"), name_);
  identityForm->addRow(QStringLiteral("Email address:"), email_);

  auto* commits = new QGroupBox(QStringLiteral("Commits"), this);
  auto* commitForm = new QFormLayout(commits);
  signingKey_ = new QLineEdit(commits);
  signingKey_->setPlaceholderText(QStringLiteral("GPG key ID; empty for unsigned commits"));
  signOff_ = new QCheckBox(QStringLiteral("Add a Signed-off-by line"), commits);
  template_ = new QPlainTextEdit(commits);
  template_->setPlaceholderText(QStringLiteral("Text that a new commit message starts from"));
  template_->setTabChangesFocus(true);
  template_->setMinimumHeight(100);
  commitForm->addRow(QStringLiteral("Signing key:"), signingKey_);
  commitForm->addRow(QString(), signOff_);
  commitForm->addRow(QStringLiteral("Commit template:"), template_);

  contentLayout()->addWidget(identity);
  contentLayout()->addWidget(commits, 1);
  submitButton()->setText(QStringLiteral("Save"));
  setMinimumWidth(480);

  connect(name_, &QLineEdit::textChanged, this, [this] { validate(); });
  connect(email_, &QLineEdit::textChanged, this, [this] { validate(); });
  setControlsEnabled(false);
}

void RepositorySettingsController::load() {
  const std::shared_ptr<JobQueue> queue = jobQueue();
  if (!queue) return;
  setStatus(Status::busy, QStringLiteral("Reading settings…"));
  const GitModule module = module_;
  runQueued<GitResult<RepositoryCommitSettings>>(
      queue, this, QStringLiteral("Read repository settings"), Job::Show::none(),
      [module](JobProgress&) { return RepositoryCommitSettings::load(module); },
      [this](const GitResult<RepositoryCommitSettings>& result) {
        if (!result) {
          endWithError(result.error());
          return;
        }
        setStatus(Status::none);
        fill(result.value());
        Q_EMIT loaded();
      });
}

void RepositorySettingsController::fill(const RepositoryCommitSettings& settings) {
  loaded_ = settings;
  name_->setText(settings.userName);
  email_->setText(settings.userEmail);
  // What applies while the local field stays empty.
  name_->setPlaceholderText(settings.globalUserName.isEmpty() ? QStringLiteral("Not set")
                                                              : QStringLiteral("Global: %1").arg(settings.globalUserName));
  email_->setPlaceholderText(settings.globalUserEmail.isEmpty() ? QStringLiteral("Not set")
                                                                : QStringLiteral("Global: %1").arg(settings.globalUserEmail));
  signingKey_->setText(settings.signingKey);
  signOff_->setChecked(settings.signOff);
  template_->setPlainText(settings.commitTemplate);
  setControlsEnabled(true);
  validate();
  if (focusIdentity_) name_->setFocus();
}

RepositoryCommitSettings RepositorySettingsController::gathered() const {
  RepositoryCommitSettings settings = loaded_.value_or(RepositoryCommitSettings());
  settings.userName = name_->text();
  settings.userEmail = email_->text();
  settings.signingKey = signingKey_->text();
  settings.signOff = signOff_->isChecked();
  settings.commitTemplate = template_->toPlainText();
  return settings;
}

void RepositorySettingsController::validate(bool) {
  if (isOperationInProgress()) return;
  const QString email = email_->text().trimmed();
  // A warning only: git takes any text, and the user may know better.
  static const QRegularExpression plausible(QStringLiteral("^[^@\\s]+@[^@\\s]+$"));
  if (!email.isEmpty() && !plausible.match(email).hasMatch()) {
    setStatus(Status::warning, QStringLiteral("This doesn't look like an email address"));
  } else {
    setStatus(Status::none);
  }
  submitButton()->setEnabled(loaded_.has_value());
}

void RepositorySettingsController::submit() {
  if (!loaded_) return;
  const RepositoryCommitSettings before = *loaded_;
  const RepositoryCommitSettings after = gathered();
  const GitModule module = module_;
  submitted_ = after;
  runSheetJob(QStringLiteral("Save repository settings"), QStringLiteral("Saving settings…"),
              [module, before, after](JobProgress&) { return RepositoryCommitSettings::save(module, before, after); });
}

RepositorySettingsController* ShowRepositorySettingsSheetCommand::execute(QWidget* parent, const GitModule& module,
                                                                         std::shared_ptr<JobQueue> queue, bool focusIdentity,
                                                                         std::function<void(const JelvSheetResult&)> completion) {
  auto* sheet = new RepositorySettingsController(module, parent ? parent->window() : nullptr);
  sheet->setJobQueue(queue);
  sheet->setFocusOnIdentity(focusIdentity);
  QPointer<QWidget> opener(parent);
  JelvSheetController::showSheet(parent, sheet, [opener, module, queue, completion](const JelvSheetResult& result) {
    if (result.error() && opener) ErrorWindowController::present(opener, module, *result.error(), queue);
    if (completion) completion(result);
  });
  sheet->load();
  return sheet;
}
