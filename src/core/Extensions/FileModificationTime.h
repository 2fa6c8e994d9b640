#pragma once
// Modification times of the few files the refresh compares to skip reads that would
// give the same answer.
#include <QDateTime>
#include <QString>
#include <optional>

// Nothing when the file doesn't exist (or can't be read). Millisecond precision: a
// write follows the previous read by far more than that.
std::optional<QDateTime> fileModificationTime(const QString& path);
