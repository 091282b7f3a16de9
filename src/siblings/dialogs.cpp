#include <algorithm>
#include <string>
#include <vector>

#include "embedded_siblings_pages.h"
#include "frame/dialog_frame.h"
#include "frame/member_table.h"
#include "frame/page_text.h"
#include "siblings/components.h"
#include "text/fold.h"

namespace tarlo::siblings {
namespace {

using frame::PageText;
using variant::spliced;

template <class Dialog, std::string Dialog::*kText>
constexpr frame::Property<Dialog> textOf(std::string_view name) {
  return {name, [](const Dialog& dialog) { return Variant(dialog.*kText); },
          [](Dialog& dialog, const Variant& value) { dialog.*kText = spliced(value); }};
}

class WebDialog : public frame::MemberObject<WebDialog> {
 public:
  struct Members {
    static std::span<const frame::Property<WebDialog>> properties();
    static std::span<const frame::Method<WebDialog>> methods();
  };

 private:
  struct Step {
    std::string title;
    std::string content;
    std::string next;
    std::string back;
  };

  Variant connect(std::span<Variant> arguments);
  Variant addStep(std::span<Variant> arguments);
  Variant writeDialog(std::span<Variant> arguments);
  std::string stepsMarkup() const;
  std::string scriptsMarkup() const;
  std::string scriptElements() const;

  Page* page_ = nullptr;
  std::string title_;
  int totalStep_ = 0;  // kept for reading back: the steps that were added count
  std::string script_;
  std::string formAction_;
  std::string helpHtml_;
  std::string helpTitle_;
  std::string html_;
  std::vector<Step> steps_;
};

std::span<const frame::Property<WebDialog>> WebDialog::Members::properties() {
  static constexpr frame::Property<WebDialog> kRows[] = {
      textOf<WebDialog, &WebDialog::title_>("title"),
      textOf<WebDialog, &WebDialog::script_>("addjs"),
      textOf<WebDialog, &WebDialog::formAction_>("FormAction"),
      textOf<WebDialog, &WebDialog::helpHtml_>("HelpHtml"),
      textOf<WebDialog, &WebDialog::helpTitle_>("HelpTitle"),
      textOf<WebDialog, &WebDialog::html_>("addHTML"),
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
  static const PageText step(embedded::siblings_pages::find("web_dialog_step.html"));
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
  static const PageText dialog(embedded::siblings_pages::find("web_dialog.html"));
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

bool isColour(std::string_view text) {
  if (text.starts_with('#')) text.remove_prefix(1);
  return std::ranges::all_of(text, text::isLetterOrDigit);
}

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

std::span<const frame::Property<SingleDialog>> SingleDialog::Members::properties() {
  static constexpr frame::Property<SingleDialog> kRows[] = {
      textOf<SingleDialog, &SingleDialog::title_>("title"),
      textOf<SingleDialog, &SingleDialog::body_>("bodyHtml"),
      textOf<SingleDialog, &SingleDialog::script_>("addjs"),
      textOf<SingleDialog, &SingleDialog::colour_>("bgcolor"),
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
  static const PageText dialog(embedded::siblings_pages::find("single_dialog.html"));
  if (page_ == nullptr) throw RuntimeError(ErrorNumber::ObjectNotSet, "ASPConnect");
  frame::writeResponseSettings(page_->response);
  dialog.write(page_->response, {{"title", title_},
                                 {"colour", isColour(colour_) ? colour_ : ""},
                                 {"body", body_},
                                 {"script", script_}});
  return {};
}

}  // namespace

std::shared_ptr<Object> makeWebDialog() {
  return std::make_shared<WebDialog>();
}

std::shared_ptr<Object> makeSingleDialog() {
  return std::make_shared<SingleDialog>();
}

}  // namespace tarlo::siblings
