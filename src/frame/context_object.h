#pragma once
// A page context as a late-bound value: what hosts hand to OnStartPage, and what pages hand to the
// ASPConnect of a sibling component in the place of each of the five objects, which all belong to
// one page.

#include "frame/page.h"
#include "variant/object.h"

namespace tarlo::frame {

class ContextObject : public Object {
 public:
  explicit ContextObject(Page& page) : page_(page) {}
  Page& page() const { return page_; }

 private:
  Page& page_;
};

}  // namespace tarlo::frame
