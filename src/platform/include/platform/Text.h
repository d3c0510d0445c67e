#pragma once

#include <QString>
#include <initializer_list>

namespace pendra {

/// Fills each "%@" of `pattern` in turn. What is filled in is never read as a pattern again, so a name
/// that holds "%@" or "%1" stays as it is.
QString formatted(QStringView pattern, std::initializer_list<QStringView> values);

}  // namespace pendra
