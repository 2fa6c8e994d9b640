#pragma once
// Clones a repository into a new folder; the repository joins the registry and opens in
// a tab of the window. The sheet runs on the queue of the tab it opened from.
#include <QString>
#include <functional>
#include <memory>

class JobQueue;
class QWidget;

struct ShowCloneSheetCommand {
  // `opened` receives the new repository's path after a successful clone.
  static void execute(QWidget* window, std::shared_ptr<JobQueue> queue, const QString& url,
                      std::function<void(const QString& path)> opened);
};
