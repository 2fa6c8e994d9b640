#include "UI/CustomCommands/EditCustomCommandWindowController.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "Models/CustomCommands/CustomCommandEnvironment.h"
#include "UI/CustomCommands/EditCustomCommandActionWindowController.h"

namespace {

constexpr std::array<CustomCommand::Target, 4> targets{CustomCommand::Target::repository, CustomCommand::Target::revision,
                                                       CustomCommand::Target::file, CustomCommand::Target::reference};
constexpr std::array<CustomCommand::ReferenceTarget, 3> referenceKinds{
    CustomCommand::ReferenceTarget::localBranch, CustomCommand::ReferenceTarget::remoteBranch, CustomCommand::ReferenceTarget::tag};

}  // namespace

QString EditCustomCommandWindowController::defaultName(CustomCommand::Target target) {
  switch (target) {
    case CustomCommand::Target::repository: return QStringLiteral("Repository Custom Command");
    case CustomCommand::Target::revision: return QStringLiteral("Revision Custom Command");
    case CustomCommand::Target::file: return QStringLiteral("File Custom Command");
    case CustomCommand::Target::reference: return QStringLiteral("Branch Custom Command");
  }
  return {};
}

CustomCommandPtr EditCustomCommandWindowController::newCommand(CustomCommand::Target target) {
  auto command = std::make_shared<CustomCommand>();
  command->target = target;
  command->name = defaultName(target);
  command->action = std::make_shared<ProcessCustomCommandAction>(QString(), QString(), false, true);
  return command;
}

EditCustomCommandWindowController::EditCustomCommandWindowController(const CustomCommandPtr& command, bool withStorage, QWidget* parent)
    : QDialog(parent) {
  setObjectName(QStringLiteral("editCustomCommand"));
  setWindowTitle(tr("Custom Command"));
  auto* form = new QFormLayout;

  name_ = new QLineEdit(this);
  name_->setObjectName(QStringLiteral("name"));
  form->addRow(tr("&Name:"), name_);

  target_ = new QComboBox(this);
  target_->setObjectName(QStringLiteral("target"));
  for (CustomCommand::Target target : targets) target_->addItem(CustomCommand::label(target), int(target));
  form->addRow(tr("&Shown for:"), target_);

  referenceKinds_ = new QWidget(this);
  auto* kindsRow = new QHBoxLayout(referenceKinds_);
  kindsRow->setContentsMargins(0, 0, 0, 0);
  const QStringList kindTitles{tr("Local branches"), tr("Remote branches"), tr("Tags")};
  for (size_t i = 0; i < referenceKinds.size(); ++i) {
    referenceBoxes_[i] = new QCheckBox(kindTitles[int(i)], referenceKinds_);
    referenceBoxes_[i]->setObjectName(CustomCommand::jsonValue(referenceKinds[i]));
    kindsRow->addWidget(referenceBoxes_[i]);
  }
  kindsRow->addStretch();
  form->addRow(QString(), referenceKinds_);

  if (withStorage) {
    storage_ = new QComboBox(this);
    storage_->setObjectName(QStringLiteral("storage"));
    storage_->addItem(tr("Only here (.git/jelv/custom-commands.json)"), false);
    storage_->addItem(tr("Shared with the repository (.jelv/custom-commands.json)"), true);
    form->addRow(tr("S&tored:"), storage_);
  }

  kind_ = new QComboBox(this);
  kind_->setObjectName(QStringLiteral("kind"));
  kind_->addItems({tr("Run a Program"), tr("Open a URL"), tr("Show a Dialog")});
  form->addRow(tr("&Does:"), kind_);

  action_ = new CustomCommandActionEditor(false, this);
  auto* dialogPage = new QWidget(this);
  auto* dialogForm = new QFormLayout(dialogPage);
  dialogForm->setContentsMargins(0, 0, 0, 0);
  dialogTitle_ = new QLineEdit(dialogPage);
  dialogTitle_->setObjectName(QStringLiteral("dialogTitle"));
  dialogForm->addRow(tr("&Title:"), dialogTitle_);
  dialogDescription_ = new QPlainTextEdit(dialogPage);
  dialogDescription_->setObjectName(QStringLiteral("dialogDescription"));
  dialogDescription_->setMaximumHeight(70);
  dialogForm->addRow(tr("D&escription:"), dialogDescription_);
  for (int i = 0; i < 2; ++i) {
    ButtonRow& row = buttons_[size_t(i)];
    row.title = new QLineEdit(dialogPage);
    row.title->setObjectName(QStringLiteral("buttonTitle%1").arg(i + 1));
    row.title->setPlaceholderText(i == 0 ? tr("OK") : tr("None"));
    auto* edit = new QPushButton(tr("Action…"), dialogPage);
    edit->setObjectName(QStringLiteral("buttonAction%1").arg(i + 1));
    connect(edit, &QPushButton::clicked, this, [this, i] { editButtonAction(i); });
    row.summary = new QLabel(dialogPage);
    row.summary->setEnabled(false);
    auto* line = new QHBoxLayout;
    line->addWidget(row.title, 1);
    line->addWidget(edit);
    dialogForm->addRow(i == 0 ? tr("First button:") : tr("Second button:"), line);
    dialogForm->addRow(QString(), row.summary);
  }
  pages_ = new QStackedWidget(this);
  pages_->addWidget(action_);  // program and URL share the editor
  pages_->addWidget(dialogPage);

  variables_ = new QLabel(this);
  variables_->setObjectName(QStringLiteral("availableVariables"));
  variables_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  variables_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  variables_->setMinimumWidth(260);

  error_ = new QLabel(this);
  error_->setObjectName(QStringLiteral("error"));
  error_->setStyleSheet(QStringLiteral("color: #d33;"));
  error_->hide();

  auto* left = new QVBoxLayout;
  left->addLayout(form);
  left->addWidget(pages_);
  left->addStretch();
  auto* columns = new QHBoxLayout;
  columns->addLayout(left, 3);
  columns->addSpacing(12);
  columns->addWidget(variables_, 2);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(columns, 1);
  layout->addWidget(error_);
  layout->addWidget(buttons);

  // The command's values.
  name_->setText(command->name);
  lastTarget_ = command->target;
  target_->setCurrentIndex(target_->findData(int(command->target)));
  for (size_t i = 0; i < referenceKinds.size(); ++i) {
    referenceBoxes_[i]->setChecked(!command->referenceTargets || command->appliesTo(referenceKinds[i]));
  }
  if (storage_) storage_->setCurrentIndex(command->shared ? 1 : 0);
  if (command->ui) {
    kind_->setCurrentIndex(dialog);
    dialogTitle_->setText(command->ui->title);
    dialogDescription_->setPlainText(command->ui->description);
    for (size_t i = 0; i < buttons_.size() && i < command->ui->buttons.size(); ++i) {
      buttons_[i].title->setText(command->ui->buttons[i].title);
      buttons_[i].action = command->ui->buttons[i].action;
    }
  } else {
    kind_->setCurrentIndex(command->action && command->action->type() == CustomCommandAction::Type::url ? url : program);
    action_->setAction(command->action);
  }
  // A first button does something by default: it runs a program still to be named.
  if (!buttons_[0].action) buttons_[0].action = std::make_shared<ProcessCustomCommandAction>(QString(), QString(), false, true);
  if (!buttons_[1].action) buttons_[1].action = std::make_shared<CancelCustomCommandAction>();
  for (ButtonRow& row : buttons_) row.summary->setText(EditCustomCommandActionWindowController::summary(row.action));

  connect(target_, &QComboBox::currentIndexChanged, this, &EditCustomCommandWindowController::targetChanged);
  connect(kind_, &QComboBox::currentIndexChanged, this, &EditCustomCommandWindowController::kindChanged);
  connect(action_, &CustomCommandActionEditor::edited, error_, &QLabel::hide);
  targetChanged();
  kindChanged();
  resize(760, 440);
}

CustomCommand::Target EditCustomCommandWindowController::target() const {
  return static_cast<CustomCommand::Target>(target_->currentData().toInt());
}

void EditCustomCommandWindowController::targetChanged() {
  const CustomCommand::Target now = target();
  // A name nobody has changed follows the target.
  if (name_->text() == defaultName(lastTarget_)) name_->setText(defaultName(now));
  lastTarget_ = now;
  referenceKinds_->setVisible(now == CustomCommand::Target::reference);
  // The help is "$var<tabs> what it is" a line; a table lines the columns up in any font.
  QString rows;
  for (const QString& line : CustomCommandEnvironment::availableVariables(now).split(QLatin1Char('\n'))) {
    const qsizetype tab = line.indexOf(QLatin1Char('\t'));
    rows += QStringLiteral("<tr><td><code>%1</code></td><td>&nbsp;&nbsp;%2</td></tr>")
                .arg(line.left(tab).toHtmlEscaped(), line.mid(tab).trimmed().toHtmlEscaped());
  }
  variables_->setText(QStringLiteral("<p><b>Available Variables:</b></p><table>%1</table>").arg(rows));
}

void EditCustomCommandWindowController::kindChanged() {
  const int kind = kind_->currentIndex();
  pages_->setCurrentIndex(kind == dialog ? 1 : 0);
  if (kind != dialog) action_->setType(kind == url ? CustomCommandAction::Type::url : CustomCommandAction::Type::process, true);
  error_->hide();
}

void EditCustomCommandWindowController::editButtonAction(int index) {
  ButtonRow& row = buttons_[size_t(index)];
  EditCustomCommandActionWindowController editor(row.action, this);
  if (editor.exec() != QDialog::Accepted) return;
  row.action = editor.action();
  row.summary->setText(EditCustomCommandActionWindowController::summary(row.action));
}

CustomCommandPtr EditCustomCommandWindowController::command() const {
  auto command = std::make_shared<CustomCommand>();
  command->target = target();
  command->name = name_->text().trimmed();
  if (command->target == CustomCommand::Target::reference) {
    std::vector<CustomCommand::ReferenceTarget> kinds;
    for (size_t i = 0; i < referenceKinds.size(); ++i) {
      if (referenceBoxes_[i]->isChecked()) kinds.push_back(referenceKinds[i]);
    }
    // All three is the same as none listed, which the file leaves out.
    if (kinds.size() != referenceKinds.size()) command->referenceTargets = kinds;
  }
  command->shared = storage_ && storage_->currentData().toBool();
  if (kind_->currentIndex() == dialog) {
    auto ui = std::make_shared<CustomCommandUI>();
    ui->title = dialogTitle_->text();
    ui->description = dialogDescription_->toPlainText();
    for (const ButtonRow& row : buttons_) {
      // The first button always exists ("OK" unless named); the second only when named.
      const QString title = row.title->text().trimmed();
      if (&row == &buttons_[1] && title.isEmpty()) continue;
      ui->buttons.push_back({title.isEmpty() ? QStringLiteral("OK") : title, row.action});
    }
    command->ui = ui;
  } else {
    command->action = action_->action();
  }
  return command;
}

std::optional<QString> EditCustomCommandWindowController::problem() const {
  if (name_->text().trimmed().isEmpty()) return tr("Enter a name for the menu.");
  if (kind_->currentIndex() != dialog) return action_->problem();
  if (dialogTitle_->text().trimmed().isEmpty()) return tr("Enter the dialog's title.");
  for (const CustomCommandUI::Button& button : command()->ui->buttons) {
    if (auto problem = CustomCommandActionEditor::problemOf(button.action)) return button.title + QStringLiteral(": ") + *problem;
  }
  return std::nullopt;
}

void EditCustomCommandWindowController::accept() {
  if (const std::optional<QString> problem = this->problem()) {
    error_->setText(*problem);
    error_->show();
    return;
  }
  QDialog::accept();
}
