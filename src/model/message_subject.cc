#include "model/message_subject.h"

SourcePosition MessageSubject::current_;
