// Parses a configuration text held in memory into a fresh Configuration,
// published in Config as the parser expects, and keeps what the parser
// said on stderr.
#ifndef FW_TESTS_LANG_PARSED_CONFIGURATION_H
#define FW_TESTS_LANG_PARSED_CONFIGURATION_H

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <sstream>
#include <string>

#include "driver/configuration.h"
#include "driver/fw_file.h"
#include "lang/parser.h"
#include "lang/scanner.h"
#include "model/ordered_entity_list.h"
#include "model/registry.h"

struct ParsedConfiguration {
  explicit ParsedConfiguration(const std::string& text) : config(new FWFile(nullptr, nullptr)) {
    Config = &config;
    FILE* stream = fmemopen(const_cast<char*>(text.data()), text.size(), "r");
    yyrestart(stream);
    testing::internal::CaptureStderr();
    result = yyparse();
    err = testing::internal::GetCapturedStderr();
    fclose(stream);
    Config = nullptr;
  }
  Registry& registry() { return *config.TheRegistry(); }
  // The object of `name` in `list`, as the tests expect it to be made.
  template <class T>
  T* Find(const TList<Entity>& list, const char* name, const char* screen = nullptr) {
    Entity key(name, screen, nullptr, 0);
    return dynamic_cast<T*>(key.FindSelf(list, 0));
  }

  Configuration config;
  int result;
  std::string err;
};

// The names of a list's objects, each followed by a blank.
inline std::string Names(const TList<Entity>& list) {
  std::string names;
  for (TList_Cell<Entity>* cell = list.Head(); cell != nullptr; cell = cell->Next())
    names += std::string(cell->Data()->Name()) + " ";
  return names;
}

// The saved text of each entry of a policy list, one a line.
inline std::string PrintedEntries(const OrderedEntityList& list) {
  std::ostringstream out;
  for (TList_Cell<Entity>* cell = list.Items().Head(); cell != nullptr; cell = cell->Next())
    cell->Data()->Print(out) << '\n';
  return out.str();
}

// The full listing line of each entry of a policy list.
inline std::string ListedEntries(const OrderedEntityList& list) {
  std::ostringstream out;
  for (TList_Cell<Entity>* cell = list.Items().Head(); cell != nullptr; cell = cell->Next())
    cell->Data()->Enumerate(out, ENUM_FULL);
  return out.str();
}

// The text is refused at `token`, with one counted error.
inline void ExpectSyntaxError(const std::string& text, const std::string& token,
                              const std::string& message = "parse error") {
  ParsedConfiguration parsed(text);
  EXPECT_EQ(parsed.result, 1) << text;
  EXPECT_EQ(parsed.config.ParseErrors(), 1) << text;
  EXPECT_EQ(parsed.err, message + " near token " + token + ".\n") << text;
}

#endif
