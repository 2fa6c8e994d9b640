#include "Controllers/History/BlameWindowController.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QVBoxLayout>

#include "Controllers/History/BlameView.h"
#include "Git/Commands/Revision/GetBlameGitCommand.h"
#include "Git/Commands/Revision/GetRevisionFileContentGitCommand.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Jobs/QueuedCall.h"
#include "Logging/AdvancedLogger.h"
#include "Models/FileContent/TextContent.h"
#include "Controls/WindowKeys.h"

namespace {

struct BlameRead {
  QString text;
  GitResult<BlameChunkList> chunks = BlameChunkList{};
  QString message;  // why nothing is shown
};

void say(JobProgress& progress, const QString& message) {
  if (!progress.isCanceled()) progress.update(0, message, JobProgressState::inProgress);
}

}  // namespace

BlameWindowController::BlameWindowController(GitModule module, std::shared_ptr<JobQueue> queue,
                                             std::function<void(const QString&)> selectRevision, QWidget* parent)
    : QDialog(parent),
      module_(std::move(module)),
      queue_(std::move(queue)),
      selectRevision_(std::move(selectRevision)),
      delayedLoad_(150, [this](const BlameArgs& args) { read(args); }) {
  setObjectName(QStringLiteral("blameWindow"));
  setWindowFlag(Qt::Window);
  setAttribute(Qt::WA_DeleteOnClose);
  WindowKeys::closeOnEscapeAndCtrlW(this);
  resize(1100, 700);
  title_ = new QLabel(this);
  title_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  status_ = new QLabel(this);
  status_->setObjectName(QStringLiteral("blameStatus"));
  view_ = new BlameView(this);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(title_);
  layout->addWidget(view_, 1);
  layout->addWidget(status_);
  layout->addWidget(buttons);
  connect(view_, &BlameView::revisionClicked, this, [this](const QString& sha) {
    if (selectRevision_) selectRevision_(sha);
  });
  connect(view_, &BlameView::revisionContextMenuRequested, this, &BlameWindowController::showRevisionMenu);
}

BlameWindowController::~BlameWindowController() {
  if (auto job = job_.lock()) job->progress().cancel();
}

void BlameWindowController::load(const BlameArgs& args) { delayedLoad_.schedule(args); }

void BlameWindowController::read(const BlameArgs& args) {
  if (auto previous = job_.lock()) previous->progress().cancel();
  args_ = args;
  setWindowTitle(tr("Blame: %1").arg(args.filepath));
  title_->setText(tr("%1 at %2").arg(args.filepath, args.sha.size() == 40 ? args.sha.left(7) : args.sha));
  status_->setText(tr("Loading blame..."));
  if (!queue_) return;
  QPointer<BlameWindowController> guard(this);
  const GitModule module = module_;
  auto job = Job::make(
      QStringLiteral("Load blame for '%1'").arg(args.filepath), Job::Show::everywhere(), Job::ProgressType::infinite,
      [guard, module, args](JobProgress& progress) {
        BlameRead read;
        say(progress, QStringLiteral("Loading file content..."));
        const GitResult<ContentPtr> content = GetRevisionFileContentGitCommand::execute(module, args.sha, args.filepath);
        if (!content) {
          read.chunks = content.error();
        } else if (content.value()->kind() != Content::Kind::text) {
          LOG_WARNING(QStringLiteral("Cannot show blame for binary file: '%1'").arg(args.filepath));
          read.message = QStringLiteral("Cannot show blame for binary file: '%1'").arg(args.filepath);
        } else {
          read.text = static_cast<const TextContent&>(*content.value()).string;
          say(progress, QStringLiteral("Loading blame..."));
          read.chunks = GetBlameGitCommand::execute(module, args.sha, args.filepath, &progress);
        }
        if (progress.isCanceled()) return;
        postQueuedCall(qApp, [guard, args, read = std::move(read)] {
          if (!guard || !(guard->args_ == args)) return;
          if (!read.message.isEmpty()) {
            guard->view_->setBlame({}, {});
            guard->status_->setText(read.message);
          } else if (!read.chunks) {
            guard->view_->setBlame({}, {});
            guard->status_->setText(tr("The blame could not be read: %1").arg(describe(read.chunks.error())));
          } else {
            // git counts a last line without a line feed as a line; the editor too.
            QString text = read.text;
            if (text.endsWith(QLatin1Char('\n'))) text.chop(1);
            guard->view_->setBlame(text, read.chunks.value());
            guard->status_->setText(tr("%1 lines").arg(guard->view_->blockCount()));
          }
          Q_EMIT guard->loaded();
        });
      });
  job_ = job;
  queue_->schedule(job);
}

void BlameWindowController::showRevisionMenu(const QString& sha, const QPoint& globalPosition) {
  QMenu menu(this);
  menu.addAction(tr("Show Commit in History"), this, [this, sha] {
    if (selectRevision_) selectRevision_(sha);
  });
  // The file as the parent had it, under the name it had there; a commit that added the
  // file has nothing before it.
  std::optional<BlameArgs> previous;
  for (const BlameChunk& chunk : view_->chunks()) {
    if (chunk.revisionInfo->sha != sha) continue;
    previous = chunk.revisionInfo->previous;
    break;
  }
  QAction* blamePrevious = menu.addAction(tr("Blame Previous Revision"), this, [this, previous] {
    if (previous) load(*previous);
  });
  blamePrevious->setEnabled(previous.has_value());
  menu.addAction(tr("Copy SHA"), this, [sha] { QApplication::clipboard()->setText(sha); });
  menu.exec(globalPosition);
}
