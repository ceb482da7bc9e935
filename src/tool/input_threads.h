// input_threads.h - a searching command's inputs read on several threads
// (-j N; by default as many as the processors the process may use), its
// output still in the inputs' order (output.h): byte for byte what one
// thread gives.
//
// Each thread reads with a reader of its own, made by the command's
// `make()` from what it checked on the command line: the library's
// expressions and searches belong to one thread at a time.  What the
// threads share is the invocation (its exit status and messages) and what
// the command gives them to read only.
#ifndef ZELSTR_TOOL_INPUT_THREADS_H
#define ZELSTR_TOOL_INPUT_THREADS_H

#include <atomic>
#include <span>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "tool/file_walk.h"
#include "tool/input.h"
#include "tool/invocation.h"
#include "tool/output.h"

namespace zelstr::tool {

// The threads for `inputs` inputs: -j's value, or the processors; never
// more than the inputs.  0 when -j's value is not a whole number from 1
// (refused on the command line).
unsigned threads_for(Invocation& inv, std::size_t inputs);

// Runs `(*reader)(input)` on every input of for_each_input, `reader` from
// `make()` once for each thread.
template <class Make>
void for_each_input_on_threads(Invocation& inv, std::span<char const* const> names, Make make) {
  FileList const files = files_to_read(inv, names);
  std::size_t const n = files.names.size();
  unsigned const threads = threads_for(inv, n);
  if (threads == 0) return;
  if (threads == 1) {
    auto reader = make();
    read_each(inv, files, [&reader](Input& in) { (*reader)(in); });
    return;
  }
  OrderedOutput output(n);
  std::atomic<std::size_t> next{0};
  auto work = [&] {
    auto reader = make();
    AlignedBytes buffer;
    for (std::size_t i; (i = next.fetch_add(1)) < n;) {
      output.begin(i);
      if (!inv.enough()) {
        Input in(inv, files.names[i].c_str(), &buffer);
        if (in.ok()) (*reader)(in);
      }
      output.end();
    }
  };
  std::vector<std::thread> others;
  try {
    for (unsigned t = 1; t < threads; ++t) others.emplace_back(work);
  } catch (std::system_error const&) {  // fewer threads than asked: the others read more
  } catch (std::bad_alloc const&) {
  }
  work();
  for (std::thread& t : others) t.join();
}

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_INPUT_THREADS_H
