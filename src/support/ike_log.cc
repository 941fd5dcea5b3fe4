#include "support/ike_log.h"

#include <cerrno>
#include <cstring>
#include <iostream>
#include <string>

#include "support/fwi18n.h"
#include "support/fwlog.h"
#include "support/settings.h"
#include "support/vars.h"

namespace {

// The product's error codes for these two failures.
constexpr int kUnknownSymbolic = 215;
constexpr int kRetrievalError = 216;

const char kProgram[] = "iked";

void report_head(const char* variable) {
  std::cerr << fwi18n_text(186, 34, "Program '") << kProgram << fwi18n_text(186, 35, "' variable '") << variable;
}

int retrieval_error(const char* variable) {
  int error = errno;
  report_head(variable);
  std::cerr << fwi18n_text(186, 36, "' retrieval error: ") << strerror(error) << '\n';
  return kRetrievalError;
}

// The canonical name of a severity word, or null (reported) when the word
// isn't known.  Severity 0 is written "EMERG", which the map calls "NONE".
const char* canonical_severity(const char* variable, const char* word) {
  const fwlog_map* entry = fwlog_mapname(fwlog_sevmap, word);
  if (entry == nullptr) {
    report_head(variable);
    std::cerr << fwi18n_text(186, 37, "' unknown symbolic '") << word << "'\n";
    return nullptr;
  }
  return entry->value == 0 ? "EMERG" : fwlog_mapvalue(fwlog_sevmap, entry->value)->name;
}

int write_severity(std::ostream& out) {
  const char* variable = "LogSeverity";
  Xstring value;
  int result = vars_get_value("?", kProgram, nullptr, variable, value, nullptr);
  if (result > 0) result = vars_get_value(nullptr, kProgram, nullptr, variable, value, nullptr);
  if (result < 0) return retrieval_error(variable);
  if (result > 0) return 0;
  const char* severity = canonical_severity(variable, value);
  if (severity == nullptr) return kUnknownSymbolic;
  out << "\nlog upto " << severity << '\n';
  return 0;
}

int write_events(std::ostream& out) {
  const char* variable = "LogEvents";
  vallist events;
  int result = vars_get_values("?", kProgram, nullptr, variable, events, nullptr);
  if (result > 0) result = vars_get_values(nullptr, kProgram, nullptr, variable, events, nullptr);
  if (result < 0) return retrieval_error(variable);
  if (result > 0) return 0;
  out << '\n';
  for (const auto& event : events) {
    const char* severity = canonical_severity(variable, event.first);
    if (severity == nullptr) return kUnknownSymbolic;
    out << "log " << severity << " \"" << event.second.c_str() << "\"\n";
  }
  return 0;
}

}  // namespace

int fwlog_ike_settings(std::ostream& out) {
  const char* saved_etc_path = etc_path;
  Xstring saved_vars_path = vars_path;
  std::string activated = std::string(etc_path) + "/.temp";
  etc_path = activated.c_str();
  vars_path = Xstring(activated.c_str()) + "/.ezdb/" + vars_getdir();
  int status = write_severity(out);
  if (status == 0) status = write_events(out);
  etc_path = saved_etc_path;
  vars_path = saved_vars_path;
  return status;
}
