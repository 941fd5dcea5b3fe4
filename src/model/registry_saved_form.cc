// The registry file: every object of the text in the form that reads back.
#include "model/registry.h"

#include "model/address_list.h"
#include "model/saved_form.h"

// The built-in objects are born with every registry and would be defined
// twice by a text that carried them.  User objects may share the name "*"
// when they are bound to a screen, so the built-in one is the one that no
// screen binds, found as a definition is.
static const Entity* BuiltInStar(const TList<Entity>& list) {
  return Entity("*", nullptr, nullptr, 0).FindSelf(list, 0);
}

void Registry::Write(std::ostream& out, int version) const {
  saved_form_header(out);
  if (version > 0) out << "REGISTRY_VERSION " << version << "\n\n";
  saved_form_section(out, "//Internal State Engines", {state_engine_internals_});
  saved_form_section(out, "//State Engines", {state_engines_});
  saved_form_section(out, "//Services", {services_}, {BuiltInStar(*services_)});
  saved_form_section(out, "//Addresses", {addresses_}, {star_, localhost_});
  saved_form_section(out, "//Screens", {screens_}, {BuiltInStar(*screens_)});
  saved_form_section(out, "//Interfaces", {admin_interfaces_, gwy_interfaces_, disabled_interfaces_, clk_interfaces_});
  saved_form_section(out, "//Certificates", {certificates_});
  saved_form_section(out, "//Keys", {keys_});
  saved_form_section(out, "//Time objects", {times_}, {BuiltInStar(*times_)}, "\n");
  if (alien_data_->Head() == nullptr) return;
  out << "\n//Alien data\n";
  for (TList_Cell<char>* line = alien_data_->Head(); line != nullptr; line = line->Next())
    out << '@' << line->Data() << '\n';
  out << '\n';
}
