#include "Commands/ShowCreateTagSheetCommand.h"

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/CreateTagController.h"
#include "Models/Tag.h"

void ShowCreateTagSheetCommand::execute(const CommandContext& context) {
  const RepositoryDataPtr data = context.data();
  if (!data) return;
  QString sha;
  QString title;
  if (const RevisionPtr revision = context.revision()) {
    sha = revision->sha().toString();
    title = QStringLiteral("%1 %2").arg(sha.left(7), revision->message().section(QLatin1Char('\n'), 0, 0));
  } else if (data->references.head) {
    sha = *data->references.head;
    title = QStringLiteral("the checked-out commit %1").arg(sha.left(7));
  } else {
    return;  // nothing committed yet
  }
  QStringList tags;
  for (const auto& tag : data->references.tags) tags << tag->name;
  auto* sheet = new CreateTagController(context.module(), sha, title, tags, context.signingKey());
  CommandFlow::showSheet(context, sheet, Subdomain::tags());
}
