#include "UI/CustomCommands/EditCustomCommandActionWindowController.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QStandardPaths>
#include <QVBoxLayout>

namespace {

constexpr int programPage = 0;
constexpr int urlPage = 1;
constexpr int cancelPage = 2;

}  // namespace

CustomCommandActionEditor::CustomCommandActionEditor(bool withCancel, QWidget* parent) : QWidget(parent) {
  type_ = new QComboBox(this);
  type_->setObjectName(QStringLiteral("actionType"));
  type_->addItem(tr("Run a Program"), int(CustomCommandAction::Type::process));
  type_->addItem(tr("Open a URL"), int(CustomCommandAction::Type::url));
  if (withCancel) type_->addItem(tr("Close the Dialog"), int(CustomCommandAction::Type::cancel));

  auto* program = new QWidget(this);
  auto* programForm = new QFormLayout(program);
  programForm->setContentsMargins(0, 0, 0, 0);
  path_ = new QLineEdit(program);
  path_->setObjectName(QStringLiteral("actionPath"));
  path_->setPlaceholderText(tr("/usr/bin/program, a name on PATH, or $git"));
  auto* choose = new QPushButton(tr("Choose…"), program);
  connect(choose, &QPushButton::clicked, this, [this] {
    const QString start = QFileInfo(path_->text()).absolutePath();
    const QString file = QFileDialog::getOpenFileName(this, tr("Choose a Program"), path_->text().isEmpty() ? QStringLiteral("/usr/bin") : start);
    if (!file.isEmpty()) path_->setText(file);
  });
  auto* pathRow = new QHBoxLayout;
  pathRow->addWidget(path_, 1);
  pathRow->addWidget(choose);
  programForm->addRow(tr("&Program:"), pathRow);
  parameters_ = new QLineEdit(program);
  parameters_->setObjectName(QStringLiteral("actionParameters"));
  parameters_->setPlaceholderText(tr("Separated by single blanks"));
  programForm->addRow(tr("P&arameters:"), parameters_);
  showOutput_ = new QCheckBox(tr("&Show output"), program);
  showOutput_->setObjectName(QStringLiteral("actionShowOutput"));
  waitForExit_ = new QCheckBox(tr("&Wait for exit"), program);
  waitForExit_->setObjectName(QStringLiteral("actionWaitForExit"));
  waitForExit_->setChecked(true);
  programForm->addRow(QString(), showOutput_);
  programForm->addRow(QString(), waitForExit_);

  auto* urlPageWidget = new QWidget(this);
  auto* urlForm = new QFormLayout(urlPageWidget);
  urlForm->setContentsMargins(0, 0, 0, 0);
  url_ = new QLineEdit(urlPageWidget);
  url_->setObjectName(QStringLiteral("actionUrl"));
  url_->setPlaceholderText(QStringLiteral("https://example.com/commit/$SHA"));
  urlForm->addRow(tr("&URL:"), url_);

  auto* cancel = new QLabel(tr("The button closes the dialog and does nothing else."), this);
  cancel->setWordWrap(true);

  pages_ = new QStackedWidget(this);
  pages_->insertWidget(programPage, program);
  pages_->insertWidget(urlPage, urlPageWidget);
  pages_->insertWidget(cancelPage, cancel);

  auto* layout = new QFormLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  typeLabel_ = new QLabel(tr("&Action:"), this);
  typeLabel_->setBuddy(type_);
  layout->addRow(typeLabel_, type_);
  layout->addRow(pages_);

  connect(type_, &QComboBox::currentIndexChanged, this, [this] {
    const CustomCommandAction::Type type = currentType();
    pages_->setCurrentIndex(type == CustomCommandAction::Type::process ? programPage : type == CustomCommandAction::Type::url ? urlPage : cancelPage);
    Q_EMIT edited();
  });
  for (QLineEdit* field : {path_, parameters_, url_}) connect(field, &QLineEdit::textChanged, this, &CustomCommandActionEditor::edited);
  for (QCheckBox* box : {showOutput_, waitForExit_}) connect(box, &QCheckBox::toggled, this, &CustomCommandActionEditor::edited);
}

CustomCommandAction::Type CustomCommandActionEditor::currentType() const {
  return static_cast<CustomCommandAction::Type>(type_->currentData().toInt());
}

void CustomCommandActionEditor::setType(CustomCommandAction::Type type, bool fixed) {
  const int index = type_->findData(int(type));
  if (index >= 0) type_->setCurrentIndex(index);
  type_->setVisible(!fixed);
  typeLabel_->setVisible(!fixed);
}

void CustomCommandActionEditor::setAction(const CustomCommandActionPtr& action) {
  if (!action) return;
  if (const int index = type_->findData(int(action->type())); index >= 0) type_->setCurrentIndex(index);
  if (const auto* process = dynamic_cast<const ProcessCustomCommandAction*>(action.get())) {
    path_->setText(process->path);
    parameters_->setText(process->parameters);
    showOutput_->setChecked(process->showOutput);
    waitForExit_->setChecked(process->waitForExit);
  } else if (const auto* url = dynamic_cast<const UrlCustomCommandAction*>(action.get())) {
    url_->setText(url->url);
  }
}

CustomCommandActionPtr CustomCommandActionEditor::action() const {
  switch (currentType()) {
    case CustomCommandAction::Type::process:
      return std::make_shared<ProcessCustomCommandAction>(path_->text().trimmed(), parameters_->text(), showOutput_->isChecked(),
                                                          waitForExit_->isChecked());
    case CustomCommandAction::Type::url:
      if (url_->text().trimmed().isEmpty()) return nullptr;
      return std::make_shared<UrlCustomCommandAction>(url_->text().trimmed());
    case CustomCommandAction::Type::cancel: return std::make_shared<CancelCustomCommandAction>();
  }
  return nullptr;
}

std::optional<QString> CustomCommandActionEditor::problem() const { return problemOf(action()); }

std::optional<QString> CustomCommandActionEditor::problemOf(const CustomCommandActionPtr& action) {
  if (!action) return tr("Enter the URL to open.");
  const auto* process = dynamic_cast<const ProcessCustomCommandAction*>(action.get());
  if (!process) return std::nullopt;
  const QString path = process->path;
  if (path == QStringLiteral("$git")) return std::nullopt;
  const bool onPath = !path.isEmpty() && !path.contains(QLatin1Char('/')) && !QStandardPaths::findExecutable(path).isEmpty();
  if (onPath || QFileInfo(path).isFile()) return std::nullopt;
  return QStringLiteral("Script path not found");
}

EditCustomCommandActionWindowController::EditCustomCommandActionWindowController(const CustomCommandActionPtr& action, QWidget* parent)
    : QDialog(parent) {
  setObjectName(QStringLiteral("editCustomCommandAction"));
  setWindowTitle(tr("Button Action"));
  editor_ = new CustomCommandActionEditor(true, this);
  editor_->setAction(action);
  error_ = new QLabel(this);
  error_->setObjectName(QStringLiteral("error"));
  error_->setStyleSheet(QStringLiteral("color: #d33;"));
  error_->hide();
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(editor_, &CustomCommandActionEditor::edited, error_, &QLabel::hide);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(editor_);
  layout->addWidget(error_);
  layout->addStretch();
  layout->addWidget(buttons);
  resize(480, sizeHint().height());
}

void EditCustomCommandActionWindowController::accept() {
  if (const std::optional<QString> problem = editor_->problem()) {
    error_->setText(*problem);
    error_->show();
    return;
  }
  QDialog::accept();
}

QString EditCustomCommandActionWindowController::summary(const CustomCommandActionPtr& action) {
  if (const auto* process = dynamic_cast<const ProcessCustomCommandAction*>(action.get())) {
    return process->parameters.isEmpty() ? process->path : process->path + QLatin1Char(' ') + process->parameters;
  }
  if (const auto* url = dynamic_cast<const UrlCustomCommandAction*>(action.get())) return url->url;
  if (action && action->type() == CustomCommandAction::Type::cancel) return tr("Closes the dialog");
  return tr("Nothing chosen");
}
