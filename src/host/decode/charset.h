#pragma once
// Bytes of browsers to UTF-8 and back. Pages are labelled gb2312, which browsers read and write as
// GBK; scripts and some navigations send UTF-8 all the same, and nothing in a request says which.

#include <string>
#include <string_view>

namespace tarlo::host {

enum class Charset { Gbk, Utf8 };

// The charset that a Content-Type names, when it is one of the two (any alias that browsers use);
// else nothing found.
bool charsetOf(std::string_view contentType, Charset& found);

// Strict UTF-8 in which every character beyond ASCII has three bytes, or no such character at all.
// Measured on common and rare Chinese text: with sequences of two bytes admitted, one common
// character in six sent as GBK reads as UTF-8.
bool looksUtf8(std::string_view bytes);

// Text of a request: UTF-8 when it looks so, else GBK.
std::string decodeText(std::string_view bytes);
std::string decodeText(std::string_view bytes, Charset charset);

// GBK with 0x80 as the euro sign, as browsers write it. Bytes that are no character become U+FFFD.
std::string decodeGbk(std::string_view bytes);
// Invalid sequences become U+FFFD.
std::string decodeUtf8(std::string_view bytes);

// GB18030, which browsers read under the label gb2312 and which has every character.
std::string encodeGb18030(std::string_view utf8);

}  // namespace tarlo::host
