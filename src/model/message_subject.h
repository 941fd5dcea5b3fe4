// MessageSubject names, for as long as it lives, the object that the
// messages written meanwhile concern, so that a reader of the messages can
// point at the statement that made it.  Subjects nest and the innermost
// wins; an object without a position leaves the outer subject in force.
// The verification walks set one per object; the messages themselves
// don't know about it.
#ifndef FW_MODEL_MESSAGE_SUBJECT_H
#define FW_MODEL_MESSAGE_SUBJECT_H

#include "model/entity.h"

class MessageSubject {
 public:
  explicit MessageSubject(const Entity& subject) : before_(current_) {
    if (subject.HasPosition()) current_ = &subject;
  }
  MessageSubject(const MessageSubject&) = delete;
  MessageSubject& operator=(const MessageSubject&) = delete;
  ~MessageSubject() { current_ = before_; }

  // The position of the innermost subject that has one; unknown outside.
  static SourcePosition Current() { return current_ != nullptr ? current_->Position() : SourcePosition(); }

 private:
  const Entity* before_;
  static const Entity* current_;
};

#endif
