#pragma once
#include <QString>

class QWidget;

// Opens a folder in the desktop's file manager; when there is none, or it cannot start,
// an alert on `parent` says so rather than nothing happening.
struct ShowInFolderCommand {
  static void execute(QWidget* parent, const QString& folder);
};
