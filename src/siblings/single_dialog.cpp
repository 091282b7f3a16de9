#include "siblings/single_dialog.h"

#include <algorithm>

#include "embedded_siblings_pages.h"
#include "frame/response_settings.h"
#include "frame/template.h"

namespace tarlo::siblings {
namespace {

using frame::Template;
using variant::spliced;

bool isColour(std::string_view text) {
  if (text.starts_with('#')) text.remove_prefix(1);
  return std::ranges::all_of(text, [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
  });
}

template <std::string SingleDialog::*kText>
constexpr frame::Property<SingleDialog> text(std::string_view name) {
  return {name, [](const SingleDialog& dialog) { return Variant(dialog.*kText); },
          [](SingleDialog& dialog, const Variant& value) { dialog.*kText = spliced(value); }};
}

}  // namespace

std::span<const frame::Property<SingleDialog>> SingleDialog::Members::properties() {
  static constexpr frame::Property<SingleDialog> kRows[] = {
      text<&SingleDialog::title_>("title"),
      text<&SingleDialog::body_>("bodyHtml"),
      text<&SingleDialog::script_>("addjs"),
      text<&SingleDialog::colour_>("bgcolor"),
      {"ViewType", [](const SingleDialog& dialog) { return dialog.viewType_; },
       [](SingleDialog& dialog, const Variant& value) { dialog.viewType_ = value; }},
  };
  return kRows;
}

std::span<const frame::Method<SingleDialog>> SingleDialog::Members::methods() {
  static constexpr frame::Method<SingleDialog> kRows[] = {
      {"ASPConnect", frame::kAnyNumber, &SingleDialog::connect},
      {"writeDialog", 0, &SingleDialog::writeDialog}};
  return kRows;
}

Variant SingleDialog::connect(std::span<Variant> arguments) {
  page_ = frame::connectedPage(arguments);
  return {};
}

Variant SingleDialog::writeDialog(std::span<Variant>) {
  static const Template dialog(embedded::siblings_pages::find("single_dialog.html"));
  if (page_ == nullptr) throw RuntimeError(ErrorNumber::ObjectNotSet, "ASPConnect");
  frame::writeResponseSettings(page_->response);
  dialog.write(page_->response, {{"title", title_},
                                 {"colour", isColour(colour_) ? colour_ : ""},
                                 {"body", body_},
                                 {"script", script_}});
  return {};
}

std::shared_ptr<Object> makeSingleDialog() {
  return std::make_shared<SingleDialog>();
}

}  // namespace tarlo::siblings
