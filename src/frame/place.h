#pragma once
// The places of a page that a value can stand in, and the escape of each: the one piece of code by
// which the texts of pages, and the markup that is put together in C++, keep a value where it
// belongs. What the page holds is the value itself, once its reader has undone the escape.
//
// A value without " ' < > & \ and line ends stands everywhere as it is; number, numbers, name, bare
// and json ask for more.

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tarlo::frame {

enum class Place {
  // A piece of the page that is already written for the place where it goes: markup whose values
  // have been put in by this code, a script's text, XML of GetComboBoxXMLs, which encodes for an
  // attribute itself. Nothing is done.
  Built,
  // Between tags: each < that could begin a tag or a comment, and each & that browsers would read
  // as the beginning of a reference, as references. The rest cannot end the place, and stays; so
  // does
  // &#128512; and the like, the way in which browsers send what the page's code page does not have
  // and in which it is stored.
  Text,
  // Between the tags of a textarea: the same, but only < that could begin the end tag. A line end
  // in front is doubled, since browsers drop the first.
  Textarea,
  // An attribute in double quotes: " and each & that browsers would read as the beginning of a
  // reference. Line ends stay: a form posts them as CR LF whichever way they stand.
  Attribute,
  // The same in single quotes.
  AttributeSingle,
  // Between tags or in an attribute in double quotes, every & < > " as Server.HTMLEncode writes it:
  // what the pages of this system's own have always done.
  Encoded,
  // The same for text that was stored as the inside of an element: references in it stay, since
  // browsers send characters outside the page's code page that way.
  Kept,
  // An attribute without quotes: whatever could end it as references.
  Bare,
  // A string in quotes of either kind in a script: quotes, backslashes and line ends escaped, and
  // each < that could begin the end of the script element or a comment.
  Script,
  // The same for quotes of the one kind, and as little as that needs: the other quotes stay, of the
  // marks only those that browsers act upon are broken up, and a line end is \n.
  ScriptSingle,
  ScriptDouble,
  // A whole JSON string in a script, its quotes included. Characters beyond ASCII are escapes, so
  // that it reads alike in every code page; what is no UTF-8 becomes U+FFFD.
  Json,
  // A value in the query of an address, within an attribute or a script string: what would end the
  // value, the attribute or the string as %XX.
  Address,
  // A number in a script, a style or an address: 0 for what is none.
  Number,
  // Numbers with commas between them: 0 for anything else.
  Numbers,
  // A name that a script and an id share: letters, digits, _ and $, not a digit in front; _ for
  // anything else.
  Name,
};

// By the word that page texts use: "text", "attribute-single"; nothing for a word that is none.
std::optional<Place> placeNamed(std::string_view word);

std::string inPlace(Place place, std::string_view value);
// A place in a place, from the inside out: {Script, Attribute} is a script string in an attribute.
std::string inPlace(std::span<const Place> places, std::string_view value);

}  // namespace tarlo::frame
