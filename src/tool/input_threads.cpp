// input_threads.cpp - how many threads read the inputs.
#include "tool/input_threads.h"

#include <charconv>
#include <cstring>

#include "platform/processors.h"

namespace zelstr::tool {

unsigned threads_for(Invocation& inv, std::size_t inputs) {
  unsigned wanted = platform::usable_processors();
  if (char const* const text = inv.value("-j")) {
    char const* const end = text + std::strlen(text);
    auto const [stop, error] = std::from_chars(text, end, wanted);
    if (*text == '\0' || stop != end || error != std::errc() || wanted == 0) {
      inv.usage_error("option '-j' needs a whole number from 1, not '%s'", text);
      return 0;
    }
  }
  return inputs < wanted ? static_cast<unsigned>(inputs) : wanted;
}

}  // namespace zelstr::tool
