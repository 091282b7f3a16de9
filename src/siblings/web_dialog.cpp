#include "siblings/web_dialog.h"

#include "embedded_siblings_pages.h"
#include "frame/response_settings.h"
#include "frame/template.h"

namespace tarlo::siblings {
namespace {

using frame::Template;
using variant::spliced;

template <std::string WebDialog::*kText>
constexpr frame::Property<WebDialog> text(std::string_view name) {
  return {name, [](const WebDialog& dialog) { return Variant(dialog.*kText); },
          [](WebDialog& dialog, const Variant& value) { dialog.*kText = spliced(value); }};
}

}  // namespace

std::span<const frame::Property<WebDialog>> WebDialog::Members::properties() {
  static constexpr frame::Property<WebDialog> kRows[] = {
      text<&WebDialog::title_>("title"),
      text<&WebDialog::script_>("addjs"),
      text<&WebDialog::formAction_>("FormAction"),
      text<&WebDialog::helpHtml_>("HelpHtml"),
      text<&WebDialog::helpTitle_>("HelpTitle"),
      text<&WebDialog::html_>("addHTML"),
      {"TotalStep", [](const WebDialog& dialog) { return Variant(dialog.totalStep_); },
       [](WebDialog& dialog, const Variant& value) {
         dialog.totalStep_ = variant::toInt32(value);
       }},
  };
  return kRows;
}

std::span<const frame::Method<WebDialog>> WebDialog::Members::methods() {
  static constexpr frame::Method<WebDialog> kRows[] = {
      {"ASPConnect", frame::kAnyNumber, &WebDialog::connect},
      {"addStep", 4, &WebDialog::addStep},
      {"writeDialog", 0, &WebDialog::writeDialog}};
  return kRows;
}

Variant WebDialog::connect(std::span<Variant> arguments) {
  page_ = frame::connectedPage(arguments);
  return {};
}

Variant WebDialog::addStep(std::span<Variant> arguments) {
  steps_.push_back(
      {spliced(arguments[0]), spliced(arguments[1]), spliced(arguments[2]), spliced(arguments[3])});
  return {};
}

// Each content in an element of its own: the old tags are not closed, and take what follows them
// for their content up to the end of the element around them.
std::string WebDialog::stepsMarkup() const {
  static const Template step(embedded::siblings_pages::find("web_dialog_step.html"));
  std::string markup;
  for (const Step& each : steps_) {
    markup += step.fill({{"title", each.title}, {"content", each.content}});
  }
  return markup;
}

std::string WebDialog::scriptsMarkup() const {
  std::string list;
  for (const Step& each : steps_) {
    list += list.empty() ? "{\"next\":" : ",{\"next\":";
    list += frame::inPlace(frame::Place::Json, each.next);
    list += ",\"back\":";
    list += frame::inPlace(frame::Place::Json, each.back);
    list += '}';
  }
  return "[" + list + "]";
}

std::string WebDialog::scriptElements() const {
  if (script_.empty() || script_.starts_with('<')) return script_;
  return "<script>\r\n" + script_ + "\r\n</script>";
}

Variant WebDialog::writeDialog(std::span<Variant>) {
  static const Template dialog(embedded::siblings_pages::find("web_dialog.html"));
  if (page_ == nullptr) throw RuntimeError(ErrorNumber::ObjectNotSet, "ASPConnect");
  frame::writeResponseSettings(page_->response);
  dialog.write(page_->response, {{"title", title_},
                                 {"action", formAction_},
                                 {"steps", stepsMarkup()},
                                 {"helpTitle", helpTitle_},
                                 {"help", helpHtml_},
                                 {"html", html_},
                                 {"script", scriptElements()},
                                 {"scripts", scriptsMarkup()}});
  return {};
}

std::shared_ptr<Object> makeWebDialog() {
  return std::make_shared<WebDialog>();
}

}  // namespace tarlo::siblings
