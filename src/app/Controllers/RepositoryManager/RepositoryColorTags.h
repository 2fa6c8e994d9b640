#pragma once
// The colour tags a repository can carry. The registry stores the index into this list;
// an index outside it (from a newer version, say) shows as no tag.
#include <QColor>
#include <QIcon>
#include <QString>
#include <optional>

namespace RepositoryColorTags {
int count();
QString name(int index);
QColor color(int index);
// A round swatch; transparent for no tag, so untagged rows line up with tagged ones.
QIcon icon(std::optional<int> index, int size = 12);
bool isValid(std::optional<int> index);
}  // namespace RepositoryColorTags
