#pragma once

#include "store/Descriptors.h"

namespace pendra {

/// The entities of a document with the text that creates their tables, the contents of "Corvel.momd".
ObjectModel objectModel(QByteArray schema);

}  // namespace pendra
