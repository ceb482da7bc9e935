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
#include <cstdint>
#include <exception>
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
// `make()` once for each thread.  A walk of directories runs on a thread
// of its own meanwhile, the readers taking its files as it finds them.
template <class Make>
void for_each_input_on_threads(Invocation& inv, std::span<char const* const> names, Make make) {
  bool const walk = walks(inv);
  FileList listed;
  if (!walk) listed = files_to_read(inv, names);
  unsigned const threads = threads_for(inv, walk ? SIZE_MAX : listed.names.size());
  if (threads == 0) return;
  if (threads == 1) {
    if (walk) listed = files_to_read(inv, names);
    auto reader = make();
    read_each(inv, listed, [&reader](Input& in) { (*reader)(in); });
    return;
  }
  FileFeed feed;
  std::exception_ptr walk_failure;
  std::thread walker;
  if (walk) {
    auto find = [&] {
      try {
        find_files(inv, names, feed);
      } catch (...) {  // memory ran out: told once the readers have stopped
        walk_failure = std::current_exception();
      }
      feed.finish();
    };
    try {
      walker = std::thread(find);
    } catch (std::system_error const&) {  // no thread: the walk first
      find();
    }
  } else {
    for (std::string& name : listed.names) feed.add(std::move(name));
    feed.finish();
  }
  OrderedOutput output;
  std::atomic<std::size_t> next{0};
  auto work = [&] {
    auto reader = make();
    AlignedBytes buffer;
    for (std::size_t i = next.fetch_add(1); std::string const* name = feed.wait_for(i);
         i = next.fetch_add(1)) {
      output.begin(i);
      if (!inv.enough()) {
        Input in(inv, name->c_str(), &buffer);
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
  if (walker.joinable()) walker.join();
  if (walk_failure) std::rethrow_exception(walk_failure);
}

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_INPUT_THREADS_H
