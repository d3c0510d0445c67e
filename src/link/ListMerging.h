#pragma once

namespace pendra {

class ObjectContext;
struct FetchedLists;

/// Makes the lists of a document those of Vantor, inside an edit. A job that Vantor has moved keeps its
/// activities though its former customer goes.
void mergeLists(ObjectContext& context, const FetchedLists& lists);

}  // namespace pendra
