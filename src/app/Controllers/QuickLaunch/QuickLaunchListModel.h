#pragma once
// The rows of the quick launch's current list. Headers are neither enabled nor
// selectable; a disabled command stays selectable but shows as disabled.
#include <QAbstractListModel>
#include <vector>

#include "QuickLaunch/CommandProviderItem.h"

class QuickLaunchListModel : public QAbstractListModel {
  Q_OBJECT

 public:
  enum Role { secondaryTextRole = Qt::UserRole + 1, isHeaderRole, isDisabledRole };

  using QAbstractListModel::QAbstractListModel;

  void setItems(std::vector<CommandProviderItem> items);
  const CommandProviderItem* item(int row) const;
  bool isSelectable(int row) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  std::vector<CommandProviderItem> items_;
};
