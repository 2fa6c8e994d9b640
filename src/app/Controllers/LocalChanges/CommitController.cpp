#include "Controllers/LocalChanges/CommitController.h"

#include <QCoreApplication>

#include <QAction>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include "Controllers/LocalChanges/CommitMessageEdit.h"
#include "Controllers/QueuedWork.h"
#include "Controllers/Sheets/ErrorWindowController.h"
#include "Git/Commands/Merge/OperationControlGitCommand.h"
#include "Controllers/Sheets/RepositorySettingsController.h"
#include "Controls/SpellChecking/SpellChecker.h"
#include "Git/Commands/WorkingDirectory/CommitGitCommand.h"
#include "Git/Commands/WorkingDirectory/ContinueCherryPickGitCommand.h"
#include "Git/Commands/WorkingDirectory/GetCommitMessagesGitCommand.h"
#include "Jobs/JobOutcome.h"
#include "Models/CommitDraft.h"
#include "Models/GitModuleSettings.h"
#include "Models/RepositoryState.h"
#include "Models/SubjectCounter.h"
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"
#include "UI/Appearance.h"

CommitController::CommitController(GitModule module, std::shared_ptr<JobQueue> queue, QWidget* parent)
    : QWidget(parent), module_(std::move(module)), queue_(std::move(queue)) {
  subject_ = new SpellCheckedLineEdit(this);
  subject_->setPlaceholderText(tr("Subject"));
  counter_ = new QLabel(this);
  counter_->hide();
  description_ = new CommitMessageEdit(this);
  description_->setPlaceholderText(tr("Description"));
  description_->setTabChangesFocus(true);
  description_->setPageGuideColumn(CommitMessageEdit::storedPageGuideColumn());
  amend_ = new QCheckBox(tr("Amend"), this);
  signOff_ = new QCheckBox(tr("Sign-off"), this);
  commitButton_ = new QPushButton(this);

  options_ = new QToolButton(this);
  options_->setText(QStringLiteral("⋯"));
  options_->setToolTip(tr("Commit options"));
  options_->setPopupMode(QToolButton::InstantPopup);
  auto* menu = new QMenu(options_);
  menu->setToolTipsVisible(true);
  recentMenu_ = menu->addMenu(tr("Recent Commit Messages"));
  menu->addSeparator();
  // The description is checked; the one-line subject field has no place for underlines.
  spellChecking_ = menu->addAction(tr("Check Spelling While Typing"));
  spellChecking_->setCheckable(true);
  spellChecking_->setChecked(Preferences::shared().enableCommitSpellChecking());
  menu->addAction(tr("Repository Settings…"), this, [this] { showRepositorySettings(); });
  options_->setMenu(menu);
  // The dictionary is looked for only when the menu opens, not on every page opened.
  connect(menu, &QMenu::aboutToShow, this, [this] {
    const bool available = SpellChecker::shared().isAvailable();
    spellChecking_->setEnabled(available);
    spellChecking_->setToolTip(available ? QString() : tr("No spelling dictionary is installed"));
  });

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* subjectRow = new QHBoxLayout;
  subjectRow->addWidget(subject_, 1);
  subjectRow->addWidget(counter_);
  subjectRow->addWidget(options_);
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
  composer_.setMessage(CommitDraft::load(module_));
  showMessage(composer_.message());

  connect(subject_, &QLineEdit::textChanged, this, &CommitController::messageEdited);
  connect(description_, &QPlainTextEdit::textChanged, this, &CommitController::messageEdited);
  connect(amend_, &QCheckBox::toggled, this, &CommitController::amendToggled);
  connect(signOff_, &QCheckBox::toggled, this, [this](bool on) {
    GitModuleSettings settings = GitModuleSettings::load(module_);
    if (settings.signOff == on) return;
    settings.signOff = on;
    settings.save(module_);
  });
  description_->setSpellChecking(spellChecking_->isChecked());
  subject_->setSpellChecking(spellChecking_->isChecked());
  connect(spellChecking_, &QAction::toggled, this, [this](bool on) {
    description_->setSpellChecking(on);
    subject_->setSpellChecking(on);
    Preferences::shared().setEnableCommitSpellChecking(on);
    PreferencesNotifier::shared().post(PreferencesNotifier::Notification::enableCommitSpellCheckingChanged);
  });
  connect(recentMenu_, &QMenu::aboutToShow, this, &CommitController::loadRecentMessages);
  connect(&PreferencesNotifier::shared(), &PreferencesNotifier::pageGuideLinePositionChanged, this,
          [this] { description_->setPageGuideColumn(CommitMessageEdit::storedPageGuideColumn()); });
  connect(&PreferencesNotifier::shared(), &PreferencesNotifier::commitSubjectLimitChanged, this, &CommitController::updateCounter);
  // Whoever writes these keys, the box follows.
  connect(&PreferencesNotifier::shared(), &PreferencesNotifier::valueChanged, this, [this](const QString& key) {
    if (key == QStringLiteral("commitSubjectLimitLow") || key == QStringLiteral("commitSubjectLimitHigh")) updateCounter();
    if (key == QStringLiteral("pageGuideLinePosition")) description_->setPageGuideColumn(CommitMessageEdit::storedPageGuideColumn());
    if (key == QStringLiteral("enableCommitSpellChecking")) spellChecking_->setChecked(Preferences::shared().enableCommitSpellChecking());
    if (key == QStringLiteral("pushAutomacicallyOnCommit")) updateButton();
  });
  connect(&PreferencesNotifier::shared(), &PreferencesNotifier::enableCommitSpellCheckingChanged, this, [this] {
    spellChecking_->setChecked(Preferences::shared().enableCommitSpellChecking());
  });
  connect(commitButton_, &QPushButton::clicked, this, &CommitController::commit);
  subject_->installEventFilter(this);
  description_->installEventFilter(this);
  Appearance::follow(this, [this] { updateCounter(); });
  // Alt is followed wherever the focus is, so the button's title always says what a click does.
  qApp->installEventFilter(this);
  updateCounter();
  updateButton();
}

QPlainTextEdit* CommitController::descriptionField() const { return description_; }

bool CommitController::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if ((type == QEvent::KeyPress || type == QEvent::KeyRelease) && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Alt) {
    setOptionKeyPressed(type == QEvent::KeyPress);
  } else if (type == QEvent::ApplicationDeactivate) {
    // The release goes to another program.
    setOptionKeyPressed(false);
  }
  if (watched != subject_ && watched != description_) return QWidget::eventFilter(watched, event);
  if (type == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) && key->modifiers().testFlag(Qt::ControlModifier)) {
      commit();
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void CommitController::setOptionKeyPressed(bool pressed) {
  if (pressed == optionKeyPressed_) return;
  optionKeyPressed_ = pressed;
  updateButton();
}

void CommitController::showMessage(const CommitMessage& message) {
  filling_ = true;
  subject_->setText(message.subject);
  description_->setPlainText(message.description);
  filling_ = false;
  updateCounter();
}

void CommitController::messageEdited() {
  updateCounter();
  updateButton();
  if (filling_) return;
  composer_.setSubject(subject_->text());
  composer_.setDescription(description_->toPlainText());
  // Under amend the draft stays the user's own text, not the amended commit's message.
  CommitDraft::save(module_, composer_.draft());
}

void CommitController::updateCounter() {
  const Preferences& preferences = Preferences::shared();
  const SubjectCounter counter = subjectCounter(subject_->text(), preferences.commitSubjectLimitLow(),
                                                preferences.commitSubjectLimitHigh());
  counter_->setVisible(!counter.hidden);
  counter_->setText(QString::number(counter.count));
  const QColor color = counter.color == SubjectCounterColor::error     ? Appearance::errorText(palette())
                       : counter.color == SubjectCounterColor::warning ? Appearance::warningText(palette())
                                                                       : palette().color(QPalette::PlaceholderText);
  counter_->setStyleSheet(QStringLiteral("color: %1").arg(color.name()));
  counter_->setToolTip(counter.toolTip.value_or(QString()));
}

void CommitController::setStagedFilesCount(int count) {
  stagedCount_ = count;
  updateButton();
}

void CommitController::setRepositoryState(const RepositoryState& state, const std::optional<CommitMessage>& mergeMessage) {
  phase_ = commitPhase(state);
  const bool merging = state.is<RepositoryState::MergeInProgress>() || state.is<RepositoryState::SquashInProgress>();
  // A merge whose conflicts were all resolved to one side stages nothing, yet commits.
  const UnmergedFileList* unmerged = state.unmergedFiles();
  mergeReadyToCommit_ = state.is<RepositoryState::MergeInProgress>() && (!unmerged || unmerged->empty());
  if (!merging) {
    // The merge ended without its commit (aborted): its message goes unless the user
    // made it their own.
    if (shownMergeMessage_ && composer_.message() == *shownMergeMessage_ && !composer_.amend()) {
      composer_.setMessage(CommitMessage{});
      showMessage(CommitMessage{});
      messageEdited();
    }
    mergeMessageShown_ = false;
    shownMergeMessage_.reset();
  } else if (mergeMessage && takesMergeMessage()) {
    // Once per merge: a user who empties the fields keeps them empty.
    mergeMessageShown_ = true;
    composer_.setMessage(*mergeMessage);
    showMessage(*mergeMessage);
    messageEdited();
    shownMergeMessage_ = composer_.message();
  }
  updateButton();
}

CommitButtonTitle CommitController::buttonTitle() const {
  CommitButtonInput input;
  input.phase = phase_;
  input.amend = composer_.amend();
  input.stagedFilesCount = stagedCount_;
  input.pushAutomaticallyOnCommit = Preferences::shared().pushAutomacicallyOnCommit();
  input.optionKeyPressed = optionKeyPressed_;
  return commitButtonTitle(input);
}

void CommitController::updateButton() {
  const CommitButtonTitle title = buttonTitle();
  commitButton_->setText(title.text);
  if (title.action == CommitButtonAction::continueCherryPick || title.action == CommitButtonAction::continueRebase) {
    // The commits go on with their own messages: the fields are not needed.
    commitButton_->setToolTip(title.action == CommitButtonAction::continueRebase ? tr("Apply the remaining commits of the rebase")
                                                                                 : tr("Apply the remaining commits of the cherry-pick"));
    commitButton_->setEnabled(!busy_);
    return;
  }
  commitButton_->setToolTip(QString());
  commitButton_->setEnabled(!busy_ && (stagedCount_ > 0 || composer_.amend() || mergeReadyToCommit_) &&
                            !subject_->text().trimmed().isEmpty());
}

void CommitController::continueSequence(bool rebase) {
  busy_ = true;
  updateButton();
  const GitModule module = module_;
  QPointer<CommitController> self(this);
  queue_->schedule(Job::make(rebase ? tr("Continue Rebase") : tr("Continue Cherry-Pick"), Job::Show{3}, Job::ProgressType::infinite,
                             [self, module, rebase](JobProgress& progress) {
    const GitVoidResult result =
        rebase ? OperationControlGitCommand::execute(module, OperationControlGitCommand::Operation::rebase,
                                                     OperationControlGitCommand::Action::continueOperation, &progress)
               : ContinueCherryPickGitCommand::execute(module, &progress);
    JobOutcome::report(progress, result);
    QMetaObject::invokeMethod(qApp, [self, result] {
      if (!self) return;
      self->busy_ = false;
      if (result.isFailure() && !result.isError<Error::Canceled>()) {
        ErrorWindowController::present(self, self->module_, result.error(), self->queue_);
      }
      self->updateButton();
      // Picked or stopped again: either way HEAD and the state have moved.
      Q_EMIT self->committed();
      Q_EMIT self->commitFinished();
    });
  }));
}

void CommitController::amendToggled(bool on) {
  if (on == composer_.amend()) return;
  if (!on) {
    composer_.setAmend(false, nullptr);
    showMessage(composer_.message());
    updateButton();
    Q_EMIT amendChanged(false);
    return;
  }
  // The last message is read by a job; the box waits for it, disabled.
  amend_->setEnabled(false);
  const GitModule module = module_;
  runQueued<GitResult<QString>>(
      queue_, this, tr("Read the last commit message"), Job::Show::none(),
      [module](JobProgress&) { return GetCommitMessagesGitCommand::lastMessage(module); },
      [this](const GitResult<QString>& message) {
        amend_->setEnabled(true);
        // Turned off again while the message was read: nothing to do.
        if (!amend_->isChecked()) return;
        const GitVoidResult result = composer_.setAmend(true, [message] { return message; });
        if (result.isFailure()) {
          const QSignalBlocker blocker(amend_);
          amend_->setChecked(false);
          ErrorWindowController::present(this, module_, result.error(), queue_);
          return;
        }
        showMessage(composer_.message());
        updateButton();
        Q_EMIT amendChanged(true);
      });
}

void CommitController::loadRecentMessages() {
  recentMenu_->clear();
  recentMenu_->addAction(tr("Loading…"))->setEnabled(false);
  const GitModule module = module_;
  runQueued<GitResult<QStringList>>(
      queue_, this, tr("Recent commit messages"), Job::Show::none(),
      [module](JobProgress&) { return GetCommitMessagesGitCommand::recentMessages(module); },
      [this](const GitResult<QStringList>& result) {
        recentMenu_->clear();
        const QStringList messages = result ? result.value() : QStringList();
        if (messages.isEmpty()) recentMenu_->addAction(tr("No Recent Messages"))->setEnabled(false);
        for (const QString& text : messages) {
          const CommitMessage message = CommitMessage::fromText(text.trimmed());
          const QString title = fontMetrics().elidedText(message.subject, Qt::ElideRight, 420);
          QAction* action = recentMenu_->addAction(title);
          action->setToolTip(text.trimmed());
          connect(action, &QAction::triggered, this, [this, message] {
            showMessage(message);
            messageEdited();
          });
        }
        Q_EMIT recentMessagesLoaded();
      });
}

void CommitController::showRepositorySettings(bool focusIdentity) {
  QPointer<CommitController> self(this);
  ShowRepositorySettingsSheetCommand::execute(this, module_, queue_, focusIdentity, [self](const JelvSheetResult& result) {
    if (self && result.isSuccess()) self->reloadSettings();
  });
}

void CommitController::reloadSettings() {
  const QSignalBlocker blocker(signOff_);
  signOff_->setChecked(GitModuleSettings::load(module_).signOff);
}

void CommitController::connectErrorSheet(ErrorWindowController* sheet) {
  connect(sheet, &ErrorWindowController::committed, this, &CommitController::clearAfterCommit);
  connect(sheet, &ErrorWindowController::identitySetupRequested, this, [this] { showRepositorySettings(true); });
}

void CommitController::commit() {
  if (busy_ || !commitButton_->isEnabled()) return;
  const CommitButtonAction action = buttonTitle().action;
  if (action == CommitButtonAction::continueCherryPick || action == CommitButtonAction::continueRebase) {
    continueSequence(action == CommitButtonAction::continueRebase);
    return;
  }
  const bool andPush = buttonTitle().andPush;
  busy_ = true;
  updateButton();
  const GitModuleSettings settings = GitModuleSettings::load(module_);
  CommitOptions options;
  options.amend = composer_.amend();
  options.signOff = signOff_->isChecked();
  options.signingKey = settings.signingKey;
  const GitModule module = module_;
  const QString message = composer_.message().text();
  QPointer<CommitController> self(this);
  queue_->schedule(Job::make(options.amend ? tr("Amend") : tr("Commit"), Job::Show{3}, Job::ProgressType::infinite,
                             [self, module, message, options, andPush](JobProgress& progress) {
                               const GitVoidResult result = CommitGitCommand::execute(module, message, options, &progress);
                               JobOutcome::report(progress, result);
                               QMetaObject::invokeMethod(qApp, [self, result, andPush] {
                                 if (!self) return;
                                 self->busy_ = false;
                                 if (result.isSuccess()) {
                                   self->clearAfterCommit();
                                   if (andPush) Q_EMIT self->pushRequested();
                                 } else if (!result.isError<Error::Canceled>()) {
                                   ErrorWindowController::present(self, self->module_, result.error(), self->queue_,
                                                                  [self](ErrorWindowController* sheet) {
                                                                    if (self) self->connectErrorSheet(sheet);
                                                                  });
                                 }
                                 self->updateButton();
                                 Q_EMIT self->commitFinished();
                               });
                             }));
}

void CommitController::clearAfterCommit() {
  const bool wasAmending = composer_.amend();
  composer_.reset();
  {
    const QSignalBlocker blocker(amend_);
    amend_->setChecked(false);
  }
  showMessage(composer_.message());
  CommitDraft::clear(module_);
  updateButton();
  if (wasAmending) Q_EMIT amendChanged(false);
  Q_EMIT committed();
}
