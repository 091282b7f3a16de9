#pragma once
// TarloDialog.SingleDialog: a dialog of one page with a button that closes it.

#include <memory>
#include <string>

#include "frame/member_table.h"

namespace tarlo::siblings {

// Properties: title, bodyHtml and addjs (markup, written as they are), bgcolor (a colour name or
// #rrggbb; others are dropped), ViewType (kept for reading back). writeDialog before ASPConnect
// raises error 91.
class SingleDialog : public frame::MemberObject<SingleDialog> {
 public:
  struct Members {
    static std::span<const frame::Property<SingleDialog>> properties();
    static std::span<const frame::Method<SingleDialog>> methods();
  };

 private:
  Variant connect(std::span<Variant> arguments);
  Variant writeDialog(std::span<Variant> arguments);

  Page* page_ = nullptr;
  std::string title_;
  std::string body_;
  std::string script_;
  std::string colour_;
  Variant viewType_;
};

std::shared_ptr<Object> makeSingleDialog();

}  // namespace tarlo::siblings
