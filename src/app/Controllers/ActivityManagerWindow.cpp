#include "Controllers/ActivityManagerWindow.h"

#include <QHeaderView>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "Controls/GitOutputView.h"
#include "Jobs/JobActivityList.h"
#include "Jobs/JobItem.h"
#include "Jobs/JobQueue.h"
#include "UI/Appearance.h"
#include "Controls/WindowKeys.h"

namespace {
enum Column { NameColumn, StatusColumn, ProgressColumn, FinishedColumn };
}

ActivityManagerWindow::ActivityManagerWindow(std::shared_ptr<JobQueue> queue, QWidget* parent)
    : QWidget(parent, Qt::Window), queue_(std::move(queue)), list_(std::make_unique<JobActivityList>()) {
  setWindowTitle(QStringLiteral("Activity Manager"));
  resize(760, 520);
  rows_ = new QTreeWidget(this);
  rows_->setRootIsDecorated(false);
  rows_->setUniformRowHeights(true);
  rows_->setHeaderLabels({tr("Job"), tr("Status"), tr("Progress"), tr("Finished")});
  rows_->header()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
  header_ = new QLabel(this);
  header_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  output_ = new GitOutputView(this);

  auto* bottom = new QWidget(this);
  auto* bottomLayout = new QVBoxLayout(bottom);
  bottomLayout->setContentsMargins(0, 0, 0, 0);
  cancel_ = new QPushButton(tr("Cancel"), this);
  cancel_->setObjectName(QStringLiteral("cancelJobButton"));
  cancel_->setEnabled(false);
  connect(cancel_, &QPushButton::clicked, this, [this] {
    const int index = rows_->indexOfTopLevelItem(rows_->currentItem());
    const auto& items = list_->items();
    if (index >= 0 && index < static_cast<int>(items.size())) items[static_cast<size_t>(index)]->job->progress().cancel();
  });
  auto* headerLine = new QHBoxLayout;
  headerLine->addWidget(header_, 1);
  headerLine->addWidget(cancel_);
  bottomLayout->addLayout(headerLine);
  bottomLayout->addWidget(output_, 1);
  auto* splitter = new QSplitter(Qt::Vertical, this);
  splitter->addWidget(rows_);
  splitter->addWidget(bottom);
  splitter->setStretchFactor(1, 2);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(splitter);

  connect(rows_, &QTreeWidget::currentItemChanged, this, [this] { showSelected(); });
  WindowKeys::closeOnEscapeAndCtrlW(this);
  timer_ = new QTimer(this);
  timer_->setInterval(200);
  connect(timer_, &QTimer::timeout, this, &ActivityManagerWindow::tick);
  timer_->start();
  tick();
  if (rows_->topLevelItemCount() > 0) rows_->setCurrentItem(rows_->topLevelItem(0));
}

ActivityManagerWindow::~ActivityManagerWindow() = default;

void ActivityManagerWindow::tick() {
  if (!queue_) return;
  const std::vector<int> dirty = list_->tick(queue_->userJobs());
  const auto& items = list_->items();
  // Rows mirror the list: new rows come on top, old rows drop off the end.
  while (rows_->topLevelItemCount() < static_cast<int>(items.size())) rows_->insertTopLevelItem(0, new QTreeWidgetItem());
  while (rows_->topLevelItemCount() > static_cast<int>(items.size())) delete rows_->takeTopLevelItem(rows_->topLevelItemCount() - 1);
  for (int index : dirty) {
    const auto& item = items[static_cast<size_t>(index)];
    QTreeWidgetItem* row = rows_->topLevelItem(index);
    row->setText(NameColumn, item->name);
    row->setText(StatusColumn, item->statusString);
    row->setText(ProgressColumn, item->isRunning ? QStringLiteral("%1%").arg(qRound(item->progress)) : QString());
    row->setText(FinishedColumn, item->finished);
    row->setForeground(StatusColumn, item->isFailed ? QBrush(Appearance::errorText(palette())) : palette().text());
    item->markDrawn();
  }
  if (!rows_->currentItem() && rows_->topLevelItemCount() > 0) rows_->setCurrentItem(rows_->topLevelItem(0));
  showSelected();
}

void ActivityManagerWindow::showSelected() {
  const int index = rows_->indexOfTopLevelItem(rows_->currentItem());
  const auto& items = list_->items();
  if (index < 0 || index >= static_cast<int>(items.size())) {
    header_->clear();
    output_->setGitOutput(QString());
    cancel_->setEnabled(false);
    return;
  }
  const auto& item = items[static_cast<size_t>(index)];
  cancel_->setEnabled(item->isRunning);
  header_->setText(QStringLiteral("<b>%1</b> — %2 %3").arg(item->name.toHtmlEscaped(), item->statusString, item->finished));
  output_->setGitOutput(item->job->progress().output());
}

int ActivityManagerWindow::rowCount() const { return rows_->topLevelItemCount(); }
QString ActivityManagerWindow::outputText() const { return output_->toPlainText(); }
