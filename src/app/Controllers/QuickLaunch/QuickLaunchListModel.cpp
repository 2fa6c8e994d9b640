#include "Controllers/QuickLaunch/QuickLaunchListModel.h"

#include <QApplication>
#include <QStyle>

void QuickLaunchListModel::setItems(std::vector<CommandProviderItem> items) {
  beginResetModel();
  items_ = std::move(items);
  endResetModel();
}

const CommandProviderItem* QuickLaunchListModel::item(int row) const {
  return row >= 0 && row < rowCount() ? &items_[static_cast<size_t>(row)] : nullptr;
}

bool QuickLaunchListModel::isSelectable(int row) const {
  const CommandProviderItem* at = item(row);
  return at && !CommandProviderItems::isHeader(*at);
}

int QuickLaunchListModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : int(items_.size()); }

QVariant QuickLaunchListModel::data(const QModelIndex& index, int role) const {
  const CommandProviderItem* at = item(index.row());
  if (!at) return {};
  switch (role) {
    case Qt::DisplayRole: return CommandProviderItems::title(*at);
    case secondaryTextRole: return CommandProviderItems::secondaryText(*at);
    case isHeaderRole: return CommandProviderItems::isHeader(*at);
    case isDisabledRole: {
      const auto* command = std::get_if<QuickLaunchCommand>(at);
      return command && !command->enabled;
    }
    case Qt::DecorationRole: {
      const QStyle* style = QApplication::style();
      if (std::holds_alternative<RepositoryRecordPtr>(*at)) return style->standardIcon(QStyle::SP_DirIcon);
      if (std::holds_alternative<RepositoryFile>(*at)) return style->standardIcon(QStyle::SP_FileIcon);
      if (std::holds_alternative<ReferencePtr>(*at)) return style->standardIcon(QStyle::SP_ArrowRight);
      if (std::holds_alternative<QuickLaunchCommand>(*at)) return style->standardIcon(QStyle::SP_CommandLink);
      return {};
    }
    default: return {};
  }
}

Qt::ItemFlags QuickLaunchListModel::flags(const QModelIndex& index) const {
  return isSelectable(index.row()) ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}
