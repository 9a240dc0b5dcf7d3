#pragma once

#include <QString>

namespace tvx::htmled {

/// The form of words that stands with a number: of "%1 word|%1 words" the first with 1. Forms are parted by
/// "|", and how many a language has says which numbers they are for (docs/localisation.md).
QString form_for(const QString& forms, qulonglong number);

/// That form with the number in it, written as the system writes numbers.
QString counted(const QString& forms, qulonglong number);
/// "1 of 30 words": which form it is depends on all of them.
QString counted_of(const QString& forms, qulonglong some, qulonglong all);

}  // namespace tvx::htmled
