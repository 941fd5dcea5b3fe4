// SkipAlgorithms are the key, data, MAC and compression algorithms that a
// SKIP gateway or remote access entry names, each resolved from the SKIP
// list of its kind.  It owns its name references; the algorithms belong
// to the registry.
#ifndef FW_CRYPTO_SKIP_ALGORITHMS_H
#define FW_CRYPTO_SKIP_ALGORITHMS_H

#include <ostream>

#include "model/entity.h"

class Algorithm;

class SkipAlgorithms {
 public:
  // `names` and `placeholders` in the order key, data, MAC, compression;
  // a null name becomes its placeholder, or stays out without one.
  SkipAlgorithms(const char* const names[4], const char* const placeholders[4]);
  SkipAlgorithms(const SkipAlgorithms&) = delete;
  SkipAlgorithms& operator=(const SkipAlgorithms&) = delete;
  ~SkipAlgorithms();

  // Links the algorithm of a SKIP algorithm `kind` from `list`; one not
  // found is reported on `out` as undefined in the name of `owner`, and all
  // but compression must be installed.  Returns the number of errors;
  // nothing for other kinds or an algorithm left out.
  int Resolve(Config_Objects kind, TList<Entity>& list, const Entity& owner, std::ostream& out);
  bool RefersTo(Config_Objects kind, const char* name) const;
  void Rename(Config_Objects kind, const char* old_name, const char* new_name);

  // By position, key first; null for an algorithm left out.
  const char* Name(int slot) const { return names_[slot] != nullptr ? names_[slot]->Name() : nullptr; }
  Algorithm* Resolved(int slot) const { return resolved_[slot]; }
  // The first `count` names, each quoted behind its word of `words`;
  // "NONE" for one left out.
  std::ostream& Print(std::ostream& out, const char* const words[], int count) const;

 private:
  // The position of a SKIP algorithm kind, or -1.
  static int Slot(Config_Objects kind);

  Entity* names_[4];
  Algorithm* resolved_[4] = {nullptr, nullptr, nullptr, nullptr};
};

#endif
