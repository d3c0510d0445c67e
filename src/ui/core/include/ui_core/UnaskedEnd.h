#pragma once

namespace pendra {

class Session;

/// Nobody can be asked any more, as at a signal without an answer: stops every activity, and has the next
/// launch tell of it and of texts that were being typed and go with the program.
void stopUnasked(Session& session, bool losesTyping);

/// Tells of the end before this launch, once.
void tellOfUnaskedEnd(Session& session);

}  // namespace pendra
