#include "Controllers/Sheets/OperationSheetController.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "Services/Preferences.h"

OperationSheetController::OperationSheetController(const QString& objectName, const QString& title, const QString& message,
                                                   const QString& submitTitle, QWidget* parent)
    : JelvSheetController(parent) {
  setObjectName(objectName);
  setWindowTitle(title);
  messageLabel()->setText(message);
  submitButton()->setText(submitTitle);
  setMinimumWidth(440);
}

void OperationSheetController::setInformativeText(const QString& text) {
  informativeLabel()->setText(text);
  informativeLabel()->setVisible(!text.isEmpty());
}

QCheckBox* OperationSheetController::addOption(const QString& label, bool checked, const QString& preferenceKey) {
  auto* box = new QCheckBox(label, this);
  box->setChecked(preferenceKey.isEmpty() ? checked : Preferences::shared().boolean(preferenceKey));
  contentLayout()->addWidget(box);
  options_.push_back({box, preferenceKey});
  connect(box, &QCheckBox::toggled, this, [this] { validate(); });
  return box;
}

QComboBox* OperationSheetController::addChoice(const QString& label, const QStringList& items, int current) {
  auto* row = new QFormLayout;
  auto* combo = new QComboBox(this);
  combo->addItems(items);
  combo->setCurrentIndex(current);
  row->addRow(label, combo);
  contentLayout()->addLayout(row);
  choices_.push_back(combo);
  connect(combo, &QComboBox::currentIndexChanged, this, [this] { validate(); });
  return combo;
}

QLineEdit* OperationSheetController::addField(const QString& label, const QString& text, const QString& placeholder) {
  auto* row = new QFormLayout;
  auto* edit = new QLineEdit(text, this);
  edit->setPlaceholderText(placeholder);
  edit->setMinimumWidth(300);
  row->addRow(label, edit);
  contentLayout()->addLayout(row);
  fields_.push_back(edit);
  connect(edit, &QLineEdit::textChanged, this, [this] { validate(); });
  return edit;
}

void OperationSheetController::setPermanentWarning(const QString& warning) {
  permanentWarning_ = warning;
  validate();
}

void OperationSheetController::setOperation(const QString& jobName, const QString& verb, Operation operation) {
  jobName_ = jobName;
  verb_ = verb;
  operation_ = std::move(operation);
}

void OperationSheetController::setValidator(Validator validator) {
  validator_ = std::move(validator);
  validate();
}

void OperationSheetController::validate(bool) {
  if (isOperationInProgress()) return;
  const std::optional<QString> problem = validator_ ? validator_(*this) : std::nullopt;
  if (problem) {
    setStatus(Status::warning, *problem);
  } else if (!permanentWarning_.isEmpty()) {
    setStatus(Status::warning, permanentWarning_);
  } else {
    setStatus(Status::none);
  }
  submitButton()->setEnabled(!problem && operation_);
}

void OperationSheetController::submit() {
  validate();
  if (!submitButton()->isEnabled() || !operation_) return;
  for (const OptionBox& option : options_) {
    if (!option.preferenceKey.isEmpty()) Preferences::shared().setValue(option.preferenceKey, option.box->isChecked());
  }
  runSheetJob(jobName_, verb_, operation_(*this));
}
