#include "scoring/activity_log.h"

namespace corvanel {

void ActivityLog::LogOpen(const std::string& firstLine) {
  if (!session_.options.LogFile) return;
  storage_.OpenLog(DateText(time_.Now()) + ".log");
  LogWrite(firstLine);
}

void ActivityLog::LogWrite(const std::string& text) {
  if (!session_.options.LogFile) return;
  storage_.WriteLine(TimeTextWithSeconds(time_.TimeOfDay()) + ' ' + text);
}

void ActivityLog::LogRead(const std::string& routine, const ScoringSession& read) {
  if (!session_.options.LogFile) return;
  LogWrite(routine);
  LogWrite(' ' + std::to_string(read.SelectedSections()) + " sections");
  int position = 0;
  for (const ScoringSection& section : read.Sections()) {
    ++position;
    if (!section.selected) continue;
    LogWrite(" Section " + std::to_string(position));
    LogWrite("  " + std::to_string(section.row.Tables) + " tables");
    LogWrite("  " + std::to_string(section.boardsPerSet) + " boards per set");
  }
  LogWrite("Total number of tables " + std::to_string(read.TotalTables()));
  LogWrite("Max boards per set " + std::to_string(read.MaxBoardsPerSet()));
  LogWrite("Received data - " + std::to_string(read.Picture().received.size()));
}

}  // namespace corvanel
