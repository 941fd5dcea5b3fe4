#include "driver/fw_file.h"

#include "support/settings.h"

#include <dirent.h>
#include <sys/stat.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

const char kConfigStore[] = "/etc/ferrowall/configs";

char* directory_of(const char* domain) {
  if (domain == nullptr) return strdup("");
  if (strcmp(domain, ".") == 0 || strchr(domain, '/') != nullptr) return strdup(domain);
  return strdup((std::string(kConfigStore) + "/" + domain).c_str());
}

char* basename_of(const char* file) {
  if (file == nullptr) return strdup("<stdin>");
  return strndup(file, strcspn(file, "."));
}

// The number of "<base>.<number>", or -1 for any other name.
int version_of(const char* entry, const char* base) {
  size_t length = strlen(base);
  if (strncmp(entry, base, length) != 0 || entry[length] != '.') return -1;
  const char* digits = entry + length + 1;
  if (*digits == '\0' || strspn(digits, "0123456789") != strlen(digits)) return -1;
  return atoi(digits);
}

}  // namespace

FWFile::FWFile(const char* domain, const char* file)
    : domain_(domain != nullptr ? strdup(domain) : nullptr),
      directory_(directory_of(domain)),
      basename_(basename_of(file)),
      versname_(file != nullptr ? strdup(file) : nullptr) {}

FWFile::~FWFile() {
  free(domain_);
  free(directory_);
  free(basename_);
  free(versname_);
  delete lock_;
}

char* FWFile::pathname(const char* name) const {
  size_t length = strlen(directory_);
  if (length == 0) return strdup(name);
  std::string path(directory_);
  if (directory_[length - 1] != '/') path += '/';
  path += name;
  return strdup(path.c_str());
}

char* FWFile::Basepath() const { return versname_ != nullptr ? pathname(basename_) : nullptr; }

char* FWFile::Verspath() const { return versname_ != nullptr ? pathname(versname_) : nullptr; }

int FWFile::Exists() const {
  if (versname_ == nullptr) return 1;
  char* path = Verspath();
  struct stat status;
  int found = stat(path, &status) == 0;
  free(path);
  return found;
}

FILE* FWFile::readFILE() const {
  if (versname_ == nullptr) return stdin;
  char* path = Verspath();
  FILE* file = fopen(path, "r");
  free(path);
  return file;
}

int FWFile::HighestStoredVersion() const {
  int highest = version_;
  DIR* directory = opendir(*directory_ != '\0' ? directory_ : ".");
  if (directory == nullptr) return highest;
  while (struct dirent* entry = readdir(directory)) {
    int version = version_of(entry->d_name, basename_);
    if (version > highest) highest = version;
  }
  closedir(directory);
  return highest;
}

int FWFile::newversion(std::ofstream** base, std::ofstream** vers, char** path) {
  if (versname_ == nullptr) return -1;
  char* base_path = Basepath();
  *base = new std::ofstream(base_path, std::ios::out | std::ios::trunc);
  free(base_path);
  if (version_ < 0) version_ = 0;
  if (vers == nullptr) return ++version_;
  version_ = HighestStoredVersion() + 1;
  std::string name = std::string(basename_) + "." + std::to_string(version_);
  char* vers_path = pathname(name.c_str());
  *vers = new std::ofstream(vers_path, std::ios::out | std::ios::trunc);
  if (path != nullptr) *path = vers_path; else free(vers_path);
  return version_;
}

void FWFile::setlock() {
  if (versname_ == nullptr) return;
  char* path = Verspath();
  char* user = ferrowall_username();
  setlock(new Lock(path, nullptr, user));
  free(user);
  free(path);
}

void FWFile::setlock(Lock* lock) {
  if (lock == lock_) return;
  delete lock_;
  lock_ = lock;
}

int FWFile::AcquireReadLock() { return lock_ != nullptr ? lock_->AcquireReadLock() : 101; }

int FWFile::AcquireWriteLock() { return lock_ != nullptr ? lock_->AcquireWriteLock() : 102; }

int FWFile::ReadLock() { return lock_ != nullptr ? lock_->ReadLock() : 104; }

int FWFile::WriteLock() { return lock_ != nullptr ? lock_->WriteLock() : 106; }

void FWFile::FreeReadLock() {
  if (lock_ != nullptr) lock_->FreeReadLock();
}

void FWFile::FreeWriteLock(int all) {
  if (lock_ != nullptr) lock_->FreeWriteLock(all);
}
