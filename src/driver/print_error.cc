#include "driver/print_error.h"

#include <iostream>

#include "support/fwi18n.h"

namespace {

const int kErrorSet = 44;

struct ErrorText {
  int code;
  const char* text;
  const char* fixed_tail;  // written behind the text, outside the catalogue
  bool names_object;
};

const ErrorText kErrors[] = {
    {215, "Unknown symbolic value", "", true},
    {216, "Could not read variable(s)", "", true},
    {217, "Internal / phase error during IKE generation", "", true},
    {218, "Too many results generated", "", true},
    {219, "Invalid IPsec AH parameters", "", false},
    {220, "Invalid IPsec ESP parameters", "", false},
    {221, "Invalid IPsec IKE parameters", "", false},
    {222, "Invalid IPsec parameters", "", false},
    {223, "Object not a group", "", true},
    {224, "Object not found", "", true},
    {225, "Illegal Registry name, use \"Registry\".", "", false},
    {226, "Invalid policy name.", "", false},
    {227,
     "Cannot edit a read-only policy.\nUse \"saveas Policy name Registry Registry\" followed by "
     "\"load name\" to edit.",
     "", false},
    {228, "cannot refer to", " \"NONE\"", false},
    {229, "cannot modify", " \"NONE\"", false},
    {231, "There are unsaved changes.", "", false},
    {232, "Cannot name Policy", " \"lock.\"", false},
    {233, "Cannot name Policy", " \"Version.\"", false},
    {234, "Cannot name Policy", " \"Registry.\"", false},
    {235, "Cannot save a versioned file.  Use \"saveas Policy name Registry Registry\".", "", false},
    {236, "Too many Time objects being used. Limit is 31.", "", false},
    {237, "Could not write file", "", true},
    {238, "Registry objects redefined.", "", false},
    {239, "Screen object not defined for Screen", "", true},
    {240, "file not found.", "", false},
    {241, "parse error.", "", false},
    {242, "could not acquire read lock.", "", false},
    {243, "could not acquire write lock.", "", false},
    {244, "lock not held", "", false},
    {245, "compiler error", "", false},
    {247, "cannot modify", " \"*\"", false},
    {248, "cannot modify", " address \"localhost\"", false},
    {249, "lock unavailable", "", false},
    {250, "unresolved reference", "", false},
    {251, "invalid input", "", false},
    {252, "invalid data type for specified operation", "", false},
    {253, "unknown operation", "", false},
    {254, "unknown data type", "", false},
};

const ErrorText* find_error(int code) {
  for (const ErrorText& error : kErrors)
    if (error.code == code) return &error;
  return nullptr;
}

}  // namespace

void PrintError(std::ostream& out, int code, const char* name) {
  if (code == 0) return;
  const ErrorText* error = find_error(code);
  if (error == nullptr) {
    out << fwi18n_text(kErrorSet, 1, "unknown error code ") << code << std::endl;
    return;
  }
  // The catalogue numbers of this set are the codes themselves, so that
  // every code keeps its text whatever codes are added later.
  out << fwi18n_text(kErrorSet, error->code, error->text) << error->fixed_tail;
  if (error->names_object && name != nullptr) out << " \"" << name << '"';
  out << std::endl;
}

void PrintError(int code, const char* name) { PrintError(std::cerr, code, name); }
