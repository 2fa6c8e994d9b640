#include "Controls/RepositoryStatusBar.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>
#include <QToolButton>

#include "Jobs/JobQueue.h"
#include "Jobs/StatusBarDisplay.h"

RepositoryStatusBar::RepositoryStatusBar(std::shared_ptr<JobQueue> queue, std::function<QString()> repositoryLine, QWidget* parent)
    : QWidget(parent), queue_(std::move(queue)), repositoryLine_(std::move(repositoryLine)) {
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(8, 2, 8, 2);
  layout->setSpacing(8);
  label_ = new QLabel(this);
  label_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  bar_ = new QProgressBar(this);
  bar_->setRange(0, 100);
  bar_->setTextVisible(false);
  bar_->setFixedSize(120, 6);
  cancel_ = new QToolButton(this);
  cancel_->setText(QStringLiteral("✕"));
  cancel_->setToolTip(tr("Cancel"));
  cancel_->setAutoRaise(true);
  activity_ = new QToolButton(this);
  activity_->setText(tr("Activity"));
  activity_->setToolTip(tr("Show the Activity Manager"));
  activity_->setAutoRaise(true);
  layout->addWidget(label_, 1);
  layout->addWidget(bar_);
  layout->addWidget(cancel_);
  layout->addWidget(activity_);
  connect(cancel_, &QToolButton::clicked, this, [this] {
    if (auto job = shownJob_.lock()) job->progress().cancel();
    poll();
  });
  connect(activity_, &QToolButton::clicked, this, &RepositoryStatusBar::activityRequested);
  timer_ = new QTimer(this);
  timer_->setInterval(200);
  connect(timer_, &QTimer::timeout, this, &RepositoryStatusBar::poll);
  timer_->start();
  poll();
}

void RepositoryStatusBar::poll() {
  const QString line = repositoryLine_ ? repositoryLine_() : QString();
  const StatusBarDisplay display =
      StatusBarDisplay::choose(queue_ ? queue_->userJobs() : std::vector<std::shared_ptr<Job>>{}, QDateTime::currentDateTime(), line);
  if (label_->text() != display.text) label_->setText(display.text);
  cancel_->setVisible(display.cancelButtonVisible);
  bar_->setVisible(!display.barHidden);
  bar_->setValue(static_cast<int>(display.barHidden ? bar_->minimum() : display.barValue));
  shownJob_ = display.job;
}

QString RepositoryStatusBar::text() const { return label_->text(); }
bool RepositoryStatusBar::isCancelVisible() const { return !cancel_->isHidden(); }
bool RepositoryStatusBar::isBarVisible() const { return !bar_->isHidden(); }
