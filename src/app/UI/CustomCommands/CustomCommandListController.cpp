#include "UI/CustomCommands/CustomCommandListController.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "UI/CustomCommands/EditCustomCommandActionWindowController.h"
#include "UI/CustomCommands/EditCustomCommandWindowController.h"

namespace {

QString doesText(const CustomCommand& command) {
  if (command.ui) return QObject::tr("Dialog: %1").arg(command.ui->title);
  return EditCustomCommandActionWindowController::summary(command.action);
}

}  // namespace

CustomCommandListController::CustomCommandListController(bool withStorage, QWidget* parent) : QWidget(parent), withStorage_(withStorage) {
  list_ = new QTreeWidget(this);
  list_->setObjectName(QStringLiteral("customCommandList"));
  list_->setRootIsDecorated(false);
  list_->setUniformRowHeights(true);
  QStringList headers{tr("Name"), tr("Shown for"), tr("Does")};
  if (withStorage_) headers << tr("Stored");
  list_->setHeaderLabels(headers);
  list_->header()->setStretchLastSection(true);
  list_->setColumnWidth(0, 200);
  list_->setColumnWidth(1, 90);

  add_ = new QPushButton(tr("&Add…"), this);
  edit_ = new QPushButton(tr("&Edit…"), this);
  remove_ = new QPushButton(tr("&Remove…"), this);
  up_ = new QPushButton(tr("Move &Up"), this);
  down_ = new QPushButton(tr("Move &Down"), this);
  auto* buttons = new QHBoxLayout;
  for (QPushButton* button : {add_, edit_, remove_}) buttons->addWidget(button);
  buttons->addStretch();
  buttons->addWidget(up_);
  buttons->addWidget(down_);

  empty_ = new QLabel(tr("No custom commands yet. Add… makes one."), this);
  empty_->setObjectName(QStringLiteral("emptyState"));
  empty_->setAlignment(Qt::AlignCenter);
  empty_->setForegroundRole(QPalette::PlaceholderText);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(list_, 1);
  layout->addWidget(empty_);
  layout->addLayout(buttons);

  connect(add_, &QPushButton::clicked, this, &CustomCommandListController::addCommand);
  connect(edit_, &QPushButton::clicked, this, &CustomCommandListController::editSelected);
  connect(remove_, &QPushButton::clicked, this, &CustomCommandListController::removeSelected);
  connect(up_, &QPushButton::clicked, this, [this] { moveSelected(-1); });
  connect(down_, &QPushButton::clicked, this, [this] { moveSelected(1); });
  connect(list_, &QTreeWidget::itemDoubleClicked, this, &CustomCommandListController::editSelected);
  connect(list_, &QTreeWidget::itemSelectionChanged, this, &CustomCommandListController::updateButtons);
  updateButtons();
}

void CustomCommandListController::setCommands(CustomCommandList commands) {
  commands_ = std::move(commands);
  show(commands_.empty() ? -1 : 0);
}

int CustomCommandListController::selectedRow() const {
  const QList<QTreeWidgetItem*> selected = list_->selectedItems();
  return selected.isEmpty() ? -1 : list_->indexOfTopLevelItem(selected.front());
}

void CustomCommandListController::show(int selectRow) {
  list_->clear();
  for (const CustomCommandPtr& command : commands_) {
    QStringList columns{command->name, CustomCommand::label(command->target), doesText(*command)};
    if (withStorage_) columns << (command->shared ? tr("Shared") : tr("Local"));
    list_->addTopLevelItem(new QTreeWidgetItem(columns));
  }
  if (QTreeWidgetItem* item = list_->topLevelItem(selectRow)) list_->setCurrentItem(item);
  updateButtons();
}

void CustomCommandListController::commit(CustomCommandList commands, int selectRow) {
  commands_ = std::move(commands);
  show(selectRow);
  Q_EMIT changed(commands_);
}

EditCustomCommandWindowController* CustomCommandListController::addCommand() {
  return openEditor(EditCustomCommandWindowController::newCommand(CustomCommand::Target::repository), -1);
}

EditCustomCommandWindowController* CustomCommandListController::editSelected() {
  const int row = selectedRow();
  if (row < 0) return nullptr;
  return openEditor(commands_[size_t(row)], row);
}

EditCustomCommandWindowController* CustomCommandListController::openEditor(const CustomCommandPtr& command, int row) {
  auto* editor = new EditCustomCommandWindowController(command, withStorage_, this);
  editor->setAttribute(Qt::WA_DeleteOnClose);
  editor->setWindowModality(Qt::WindowModal);
  connect(editor, &QDialog::accepted, this, [this, editor, row] {
    CustomCommandList commands = commands_;
    const CustomCommandPtr edited = editor->command();
    if (row >= 0 && row < int(commands.size())) {
      commands[size_t(row)] = edited;
      commit(std::move(commands), row);
    } else {
      commands.push_back(edited);
      const int last = int(commands.size()) - 1;
      commit(std::move(commands), last);
    }
  });
  editor->open();
  return editor;
}

void CustomCommandListController::removeSelected() {
  const int row = selectedRow();
  if (row < 0) return;
  const CustomCommandPtr command = commands_[size_t(row)];
  auto* box = new QMessageBox(QMessageBox::Warning, tr("Remove Custom Command"),
                              tr("Remove the custom command \"%1\"?").arg(command->name), QMessageBox::NoButton, this);
  box->setObjectName(QStringLiteral("confirmationSheet"));
  box->setInformativeText(tr("Its name, its place in the menus and what it runs are lost."));
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setWindowModality(Qt::WindowModal);
  QPushButton* go = box->addButton(tr("Remove"), QMessageBox::DestructiveRole);
  go->setObjectName(QStringLiteral("confirmButton"));
  box->setDefaultButton(box->addButton(QMessageBox::Cancel));
  connect(box, &QMessageBox::buttonClicked, this, [this, go, command](QAbstractButton* button) {
    if (button != go) return;
    CustomCommandList commands = commands_;
    const auto it = std::find(commands.begin(), commands.end(), command);
    if (it == commands.end()) return;
    const int row = int(it - commands.begin());
    commands.erase(it);
    const int next = std::min(row, int(commands.size()) - 1);
    commit(std::move(commands), next);
  });
  box->open();
}

void CustomCommandListController::moveSelected(int offset) {
  const int row = selectedRow();
  const int to = row + offset;
  if (row < 0 || to < 0 || to >= int(commands_.size())) return;
  CustomCommandList commands = commands_;
  std::swap(commands[size_t(row)], commands[size_t(to)]);
  commit(std::move(commands), to);
}

void CustomCommandListController::updateButtons() {
  empty_->setVisible(commands_.empty());
  const int row = selectedRow();
  edit_->setEnabled(row >= 0);
  remove_->setEnabled(row >= 0);
  up_->setEnabled(row > 0);
  down_->setEnabled(row >= 0 && row + 1 < int(commands_.size()));
}
