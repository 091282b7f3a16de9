#pragma once
// The class TarloQuery as the page server sees it: bound to a page context, called by name, let go.

#include <array>
#include <string_view>

#include "frame/context_object.h"
#include "frame/page.h"
#include "variant/object.h"

namespace tarlo::component {

inline constexpr std::string_view kTypeLibraryName = "Orvane";
inline constexpr std::string_view kTypeLibraryId = "{3CA89972-C9FD-49B2-B749-B15EE11E42FA}";
inline constexpr std::string_view kProgId = "Orvane.TarloQuery";  // library and class
inline constexpr std::string_view kClassName = "TarloQuery";
inline constexpr std::string_view kClassId = "{C4A15423-E4B8-4357-84C2-8EE5A5C383AE}";
inline constexpr std::string_view kInterfaceName = "_TarloQuery";
inline constexpr std::string_view kInterfaceId = "{686946AA-04C1-4755-99F4-D55B6AAA4B2D}";
// They stand behind the operations in the interface, in this order.
inline constexpr std::array<std::string_view, 4> kLifecycle = {"OnStartPage", "OnEndPage",
                                                               "ASPConnect", "ASPDisconnect"};

class TarloQuery : public Object {
 public:
  // Binds the context. Error 91 from every operation before it and after onEndPage.
  void onStartPage(Page& page);
  // Lets the context go; twice in a row does no harm.
  void onEndPage();

  // Any operation or lifecycle member by name, any case. Operations may write into `arguments`.
  // While one runs, the page's statements are held to the rights of its row; who may call it is the
  // question of the door that the call comes through, and has been asked there.
  // Error 438 for an unknown name, 450 for a wrong number of arguments. OnStartPage takes a context
  // object and is for hosts that have one as a variant: ContextObject below. ASPConnect takes five
  // arguments and, like ASPDisconnect, does nothing.
  Variant call(std::string_view name, std::span<Variant> arguments) override;

 private:
  Page* page_ = nullptr;
};

using frame::ContextObject;

}  // namespace tarlo::component
