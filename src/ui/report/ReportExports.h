#pragma once

#include "ReportPaper.h"
#include "document/Session.h"

namespace pendra {

/// What is shown when it is asked for: only after a question has been answered.
using MakePaper = std::function<ReportPaper()>;

/// Asks for a name, writes the report there as a PDF, and says so, or why it could not be.
void savePdf(Session& session, const MakePaper& paper);
/// The same as a table for other programs: of what is unfolded only what is in it, so that no hour stands
/// there twice.
void saveCsv(Session& session, const MakePaper& paper);
/// Asks for a printer and prints.
void printReport(Session& session, const MakePaper& paper, QWidget& window);

}  // namespace pendra
