// window.firstpaint: opening a repository until the commit list has painted its first
// rows, against git log with the same arguments alone.
// window.scroll: paging through the whole list once; time per row painted.
#include <QHeaderView>
#include <QScrollBar>
#include <cstdio>

#include "Git/Commands/Repository/GetGitDirectoryGitCommand.h"
#include "support/WindowOpen.h"

int main(int argc, char** argv) {
  if (!Bench::hasArguments(argc, argv)) return 2;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  Bench::setUpEnvironment();
  const QString name = QString::fromLocal8Bit(argv[1]);
  auto module = GetGitDirectoryGitCommand::execute(QString::fromLocal8Bit(argv[2]));
  if (!module) {
    std::fprintf(stderr, "not a repository\n");
    return 1;
  }

  if (name == QStringLiteral("window.firstpaint")) {
    const double paint = Bench::medianOpen(module.value(), false).firstPaint;
    Bench::report(argv[1], paint, "ms", Bench::gitLogMs(module.value()), "ms");
    return 0;
  }

  // window.scroll
  auto queue = std::make_shared<JobQueue>();
  JelvDocument view(module.value(), queue);
  view.resize(1200, 800);
  view.show();
  QElapsedTimer wait;
  wait.start();
  while (view.commitList()->commitModel()->rowCount() == 0 && wait.elapsed() < 120000) QApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
  CommitListView* list = view.commitList();
  const int rowHeight = list->verticalHeader()->defaultSectionSize();
  const int visibleRows = std::max(1, list->viewport()->height() / rowHeight);
  QScrollBar* bar = list->verticalScrollBar();
  long rowsPainted = 0;
  QElapsedTimer timer;
  timer.start();
  for (int value = 0; value <= bar->maximum(); value += visibleRows) {
    bar->setValue(value);
    list->viewport()->repaint();
    rowsPainted += visibleRows;
  }
  const double ms = timer.nsecsElapsed() / 1e6;
  Bench::report(argv[1], ms / static_cast<double>(std::max(1L, rowsPainted)), "ms/row");
  std::fprintf(stderr, "window.scroll: %ld rows in %.0f ms\n", rowsPainted, ms);
  return 0;
}
