#include "Controllers/Sheets/TodoListModel.h"

#include <QMimeData>
#include <algorithm>

#include "Models/RebaseTodoList.h"

TodoListModel::TodoListModel(QObject* parent) : QAbstractListModel(parent) {}

void TodoListModel::setItems(std::vector<TodoListItem> items) {
  beginResetModel();
  items_ = std::move(items);
  RebaseTodoList::normalize(items_);
  endResetModel();
}

int TodoListModel::rowOf(const QString& sha) const {
  for (int row = 0; row < static_cast<int>(items_.size()); ++row) {
    if (!sha.isEmpty() && items_[row].sha.startsWith(sha)) return row;
  }
  return -1;
}

bool TodoListModel::setCommand(const std::vector<int>& rows, InteractiveRebaseCommand command) {
  bool all = true;
  std::vector<int> sorted = rows;
  // From the bottom up, so that a block of squashes finds its target first.
  std::sort(sorted.rbegin(), sorted.rend());
  for (int row : sorted) {
    if (row < 0 || row >= rowCount()) continue;
    if (isSquashing(command) && !RebaseTodoList::canSquash(items_, row)) {
      all = false;
      continue;
    }
    items_[row].command = command;
  }
  changed();
  return all;
}

void TodoListModel::setMessage(int row, const QString& message) {
  if (row < 0 || row >= rowCount()) return;
  TodoListItem& item = items_[row];
  if (message == item.originalMessage) {
    item.customMessage.reset();
    if (item.command == InteractiveRebaseCommand::reword) item.command = InteractiveRebaseCommand::pick;
  } else {
    item.customMessage = message;
    if (item.command == InteractiveRebaseCommand::pick) item.command = InteractiveRebaseCommand::reword;
  }
  changed();
}

std::vector<int> TodoListModel::shift(const std::vector<int>& rows, int delta) {
  if (rows.empty()) return rows;
  const auto [low, high] = std::minmax_element(rows.begin(), rows.end());
  if (delta < 0 && *low == 0) return rows;
  if (delta > 0 && *high == rowCount() - 1) return rows;
  return moveRows(rows, delta < 0 ? *low - 1 : *high + 2);
}

std::vector<int> TodoListModel::moveRows(const std::vector<int>& rows, int before) {
  beginResetModel();
  std::vector<int> moved = RebaseTodoList::move(items_, rows, before);
  RebaseTodoList::normalize(items_);
  endResetModel();
  return moved;
}

void TodoListModel::changed() {
  RebaseTodoList::normalize(items_);
  if (!items_.empty()) Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}

int TodoListModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : static_cast<int>(items_.size()); }

QVariant TodoListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const TodoListItem& item = items_[index.row()];
  switch (role) {
    case Qt::DisplayRole: return item.subject();
    case Qt::ToolTipRole: return item.message();
    case itemRole: return QVariant::fromValue(static_cast<const void*>(&item));
    default: return {};
  }
}

Qt::ItemFlags TodoListModel::flags(const QModelIndex& index) const {
  // Drops land between rows, never on one.
  if (!index.isValid()) return Qt::ItemIsDropEnabled;
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled;
}

QMimeData* TodoListModel::mimeData(const QModelIndexList& indexes) const {
  QStringList rows;
  for (const QModelIndex& index : indexes) rows.append(QString::number(index.row()));
  auto* data = new QMimeData;
  data->setData(dragItemType(), rows.join(QLatin1Char(',')).toLatin1());
  return data;
}

bool TodoListModel::dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int, const QModelIndex& parent) {
  if (action != Qt::MoveAction || !data->hasFormat(dragItemType())) return false;
  std::vector<int> rows;
  for (const QByteArray& number : data->data(dragItemType()).split(',')) {
    bool ok = false;
    const int value = number.toInt(&ok);
    if (ok) rows.push_back(value);
  }
  if (rows.empty()) return false;
  const int before = row >= 0 ? row : parent.isValid() ? parent.row() : rowCount();
  moveRows(rows, before);
  // The move is done here: a true would let the view remove the dragged rows again.
  return false;
}
