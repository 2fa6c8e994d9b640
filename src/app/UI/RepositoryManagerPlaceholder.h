#pragma once
// A small stand-in for the repository manager: the registry's recent repositories and
// an Open button. It speaks the manager's signals, so the tab hosts either.
#include <QWidget>

class AppSettings;
class QListWidget;
class QListWidgetItem;

class RepositoryManagerPlaceholder : public QWidget {
  Q_OBJECT

 public:
  explicit RepositoryManagerPlaceholder(AppSettings& registry, QWidget* parent = nullptr);
  // Reads the registry again.
  void reload();
  QListWidget* list() const { return list_; }

  static constexpr int shownRepositories = 20;

 Q_SIGNALS:
  void openRepositoryRequested(const QString& path);
  void openDocumentRequested();

 private:
  void openItem(QListWidgetItem* item);
  AppSettings& registry_;
  QListWidget* list_;
};
