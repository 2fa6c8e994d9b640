#include "UI/RepositoryManagerPlaceholder.h"

#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "Models/AppSettings.h"
#include "Services/PreferencesNotifier.h"

RepositoryManagerPlaceholder::RepositoryManagerPlaceholder(AppSettings& registry, QWidget* parent)
    : QWidget(parent), registry_(registry) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(24, 18, 24, 18);
  auto* heading = new QLabel(tr("Recent Repositories"), this);
  QFont font = heading->font();
  font.setBold(true);
  heading->setFont(font);
  layout->addWidget(heading);
  list_ = new QListWidget(this);
  list_->setObjectName(QStringLiteral("recentRepositories"));
  layout->addWidget(list_, 1);
  auto* open = new QPushButton(tr("Open Repository…"), this);
  open->setObjectName(QStringLiteral("openRepositoryButton"));
  layout->addWidget(open, 0, Qt::AlignLeft);

  connect(list_, &QListWidget::itemActivated, this, &RepositoryManagerPlaceholder::openItem);
  connect(open, &QPushButton::clicked, this, &RepositoryManagerPlaceholder::openDocumentRequested);
  connect(&PreferencesNotifier::shared(), &PreferencesNotifier::repositoryManagerDataUpdated, this,
          &RepositoryManagerPlaceholder::reload);
  reload();
}

void RepositoryManagerPlaceholder::reload() {
  list_->clear();
  if (registry_.isConnected()) {
    int shown = 0;
    for (const RepositoryRecordPtr& record : registry_.getRecentRepositories()) {
      if (shown++ == shownRepositories) break;
      auto* item = new QListWidgetItem(record->name, list_);
      item->setData(Qt::UserRole, record->repositoryPath);
      item->setToolTip(record->repositoryPath);
    }
  }
  if (list_->count() == 0) {
    auto* item = new QListWidgetItem(tr("Open a repository to start"), list_);
    item->setFlags(Qt::NoItemFlags);
  } else {
    list_->setCurrentRow(0);
  }
}

void RepositoryManagerPlaceholder::openItem(QListWidgetItem* item) {
  const QString path = item ? item->data(Qt::UserRole).toString() : QString();
  if (!path.isEmpty()) Q_EMIT openRepositoryRequested(path);
}
