#pragma once
// The rows of the interactive rebase sheet, newest first. Every edit goes through here
// and leaves the squash groups recomputed; drags carry row numbers as "rebaseItem".
#include <QAbstractListModel>
#include <vector>

#include "Models/TodoListItem.h"

class TodoListModel : public QAbstractListModel {
  Q_OBJECT
 public:
  enum Role { itemRole = Qt::UserRole + 1 };
  static QString dragItemType() { return QStringLiteral("rebaseItem"); }

  explicit TodoListModel(QObject* parent = nullptr);

  void setItems(std::vector<TodoListItem> items);
  const std::vector<TodoListItem>& items() const { return items_; }
  int rowOf(const QString& sha) const;

  // False where the command can't stand (a squash with nothing below); rows are changed
  // where it can.
  bool setCommand(const std::vector<int>& rows, InteractiveRebaseCommand command);
  // A new message makes a pick a reword; the original text undoes it.
  void setMessage(int row, const QString& message);
  // Moves the rows by one up (-1) or down (+1) as a block; gives their new rows.
  std::vector<int> shift(const std::vector<int>& rows, int delta);
  std::vector<int> moveRows(const std::vector<int>& rows, int before);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
  QStringList mimeTypes() const override { return {dragItemType()}; }
  QMimeData* mimeData(const QModelIndexList& indexes) const override;
  bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column, const QModelIndex& parent) override;

 private:
  void changed();

  std::vector<TodoListItem> items_;
};
