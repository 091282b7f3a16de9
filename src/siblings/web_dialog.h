#pragma once
// TarloDialog.WebDialog: a dialog of steps, each with its content and the scripts that leave it.

#include <memory>
#include <string>
#include <vector>

#include "frame/member_table.h"

namespace tarlo::siblings {

// Properties: title, TotalStep, addjs (script text, or script elements when it begins with one;
// written behind the steps), FormAction, HelpHtml, HelpTitle, addHTML. addStep takes title,
// content, next script and back script, an empty script being the dialog's own step. Contents,
// addjs, addHTML and HelpHtml are markup and stand in the page as they are; the titles are text.
// The page gives scripts the form `TarloDialog`, the button `btnNext`, the hidden frames
// `pophidden` and `hidden`, switchStep(), moveStep(n), and calls doFirstStep() once where the page
// has one; behind the last step it closes with the result 1. writeDialog before ASPConnect raises
// error 91.
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

std::shared_ptr<Object> makeWebDialog();

}  // namespace tarlo::siblings
