#pragma once
// A repository's tab as the window shows it, its sidebar's rows and the confirmations its
// operations ask for.
#include <gtest/gtest.h>

#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTreeWidgetItemIterator>
#include <memory>

#include "Controllers/Sidebar/RepositorySidebar.h"
#include "Jobs/JobQueue.h"
#include "UI/JelvDocument.h"
#include "support/Widgets.h"

// The tab, shown, once it has read the repository for the first time.
inline std::unique_ptr<JelvDocument> openTab(const GitModule& module, std::shared_ptr<JobQueue> queue = std::make_shared<JobQueue>()) {
  auto view = std::make_unique<JelvDocument>(module, std::move(queue));
  view->resize(1200, 800);
  view->show();
  QSignalSpy loaded(view.get(), &JelvDocument::snapshotLoaded);
  EXPECT_TRUE(loaded.wait(20000)) << "the tab read nothing";
  return view;
}

// The sidebar's row of a reference ("refs/heads/topic"); null when it shows none.
inline QTreeWidgetItem* sidebarItem(RepositorySidebar* sidebar, const QString& fullReference) {
  for (QTreeWidgetItemIterator it(sidebar); *it; ++it) {
    if ((*it)->data(0, RepositorySidebar::FullReferenceRole).toString() == fullReference) return *it;
  }
  return nullptr;
}

// Answers the visible confirmation with its confirming button; false when none came.
inline bool confirm(QWidget* window) {
  auto* box = openSheet<QMessageBox>(window);
  if (!box || box->objectName() != QStringLiteral("confirmationSheet")) return false;
  box->findChild<QPushButton*>(QStringLiteral("confirmButton"))->click();
  return true;
}
