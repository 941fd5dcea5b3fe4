#include "model/message_subject.h"

const Entity* MessageSubject::current_ = nullptr;
