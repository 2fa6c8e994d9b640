#include "Controllers/LocalChanges/CommitBoxView.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include "Controllers/Sheets/ErrorWindowController.h"
#include "Git/Commands/WorkingDirectory/CommitGitCommand.h"
#include "Git/Commands/WorkingDirectory/GetCommitMessagesGitCommand.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Models/CommitButtonTitle.h"
#include "Models/GitModuleSettings.h"
#include "Models/SubjectCounter.h"
#include "Services/Preferences.h"

CommitBoxView::CommitBoxView(GitModule module, std::shared_ptr<JobQueue> queue, QWidget* parent)
    : QWidget(parent), module_(std::move(module)), queue_(std::move(queue)) {
  subject_ = new QLineEdit(this);
  subject_->setPlaceholderText(tr("Subject"));
  counter_ = new QLabel(this);
  counter_->hide();
  description_ = new QPlainTextEdit(this);
  description_->setPlaceholderText(tr("Description"));
  description_->setTabChangesFocus(true);
  amend_ = new QCheckBox(tr("Amend"), this);
  signOff_ = new QCheckBox(tr("Sign-off"), this);
  commitButton_ = new QPushButton(this);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* subjectRow = new QHBoxLayout;
  subjectRow->addWidget(subject_, 1);
  subjectRow->addWidget(counter_);
  layout->addLayout(subjectRow);
  layout->addWidget(description_, 1);
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(amend_);
  bottom->addWidget(signOff_);
  bottom->addStretch(1);
  bottom->addWidget(commitButton_);
  layout->addLayout(bottom);

  const GitModuleSettings settings = GitModuleSettings::load(module_);
  signOff_->setChecked(settings.signOff);
  composer_.setMessage(CommitMessage::fromText(settings.draftMessage));
  showMessage(composer_.message());

  connect(subject_, &QLineEdit::textChanged, this, &CommitBoxView::messageEdited);
  connect(description_, &QPlainTextEdit::textChanged, this, &CommitBoxView::messageEdited);
  connect(amend_, &QCheckBox::toggled, this, &CommitBoxView::amendToggled);
  connect(signOff_, &QCheckBox::toggled, this, [this](bool on) {
    GitModuleSettings settings = GitModuleSettings::load(module_);
    settings.signOff = on;
    settings.save(module_);
  });
  connect(commitButton_, &QPushButton::clicked, this, &CommitBoxView::commit);
  subject_->installEventFilter(this);
  description_->installEventFilter(this);
  updateCounter();
  updateButton();
}

bool CommitBoxView::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) && key->modifiers().testFlag(Qt::ControlModifier)) {
      commit();
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void CommitBoxView::showMessage(const CommitMessage& message) {
  filling_ = true;
  subject_->setText(message.subject);
  description_->setPlainText(message.description);
  filling_ = false;
  updateCounter();
}

void CommitBoxView::messageEdited() {
  updateCounter();
  updateButton();
  if (filling_) return;
  composer_.setSubject(subject_->text());
  composer_.setDescription(description_->toPlainText());
  // The amended commit's message is not the user's draft.
  if (composer_.amend()) return;
  GitModuleSettings settings = GitModuleSettings::load(module_);
  settings.draftMessage = composer_.message().text();
  settings.save(module_);
}

void CommitBoxView::updateCounter() {
  const Preferences& preferences = Preferences::shared();
  const SubjectCounter counter = subjectCounter(subject_->text(), preferences.integer(QStringLiteral("commitSubjectLimitLow")),
                                                preferences.integer(QStringLiteral("commitSubjectLimitHigh")));
  counter_->setVisible(!counter.hidden);
  counter_->setText(QString::number(counter.count));
  const QColor color = counter.color == SubjectCounterColor::error     ? QColor(0xd0, 0x30, 0x30)
                       : counter.color == SubjectCounterColor::warning ? QColor(0xd0, 0x8a, 0x00)
                                                                       : palette().color(QPalette::PlaceholderText);
  counter_->setStyleSheet(QStringLiteral("color: %1").arg(color.name()));
  counter_->setToolTip(counter.toolTip.value_or(QString()));
}

void CommitBoxView::setStagedFilesCount(int count) {
  stagedCount_ = count;
  updateButton();
}

void CommitBoxView::updateButton() {
  CommitButtonInput input;
  input.amend = composer_.amend();
  input.stagedFilesCount = stagedCount_;
  const CommitButtonTitle title = commitButtonTitle(input);
  commitButton_->setText(title.text);
  commitButton_->setEnabled(!busy_ && (stagedCount_ > 0 || composer_.amend()) && !subject_->text().trimmed().isEmpty());
}

void CommitBoxView::amendToggled(bool on) {
  if (on == composer_.amend()) return;
  const GitModule module = module_;
  const GitVoidResult result = composer_.setAmend(on, [module] { return GetCommitMessagesGitCommand::lastMessage(module); });
  if (result.isFailure()) {
    const QSignalBlocker blocker(amend_);
    amend_->setChecked(composer_.amend());
    ErrorWindowController::present(this, module_, result.error(), queue_);
    return;
  }
  showMessage(composer_.message());
  updateButton();
}

void CommitBoxView::commit() {
  if (busy_ || !commitButton_->isEnabled()) return;
  busy_ = true;
  updateButton();
  const GitModuleSettings settings = GitModuleSettings::load(module_);
  CommitOptions options;
  options.amend = composer_.amend();
  options.signOff = signOff_->isChecked();
  options.signingKey = settings.signingKey;
  const GitModule module = module_;
  const QString message = composer_.message().text();
  QPointer<CommitBoxView> self(this);
  queue_->schedule(Job::make(options.amend ? tr("Amend") : tr("Commit"), Job::Show{3}, Job::ProgressType::infinite,
                             [self, module, message, options](JobProgress& progress) {
                               const GitVoidResult result = CommitGitCommand::execute(module, message, options, &progress);
                               QMetaObject::invokeMethod(qApp, [self, result] {
                                 if (!self) return;
                                 self->busy_ = false;
                                 if (result.isSuccess()) {
                                   self->clearAfterCommit();
                                 } else if (!result.isError<Error::Canceled>()) {
                                   auto* sheet = ErrorWindowController::present(self, self->module_, result.error(), self->queue_);
                                   connect(sheet, &ErrorWindowController::committed, self, &CommitBoxView::clearAfterCommit);
                                 }
                                 self->updateButton();
                                 Q_EMIT self->commitFinished();
                               });
                             }));
}

void CommitBoxView::clearAfterCommit() {
  composer_.reset();
  {
    const QSignalBlocker blocker(amend_);
    amend_->setChecked(false);
  }
  showMessage(composer_.message());
  GitModuleSettings settings = GitModuleSettings::load(module_);
  settings.draftMessage.clear();
  settings.save(module_);
  updateButton();
  Q_EMIT committed();
}
