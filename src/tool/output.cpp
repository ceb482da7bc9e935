// output.cpp - standard output in the inputs' order.
#include "tool/output.h"

#include <atomic>
#include <deque>
#include <mutex>
#include <string>

#include "platform/binary_stdio.h"

namespace zelstr::tool {
namespace {

// What an input read ahead of its turn has written: text, and whether it
// began with a group (whose separator is decided when it goes out).
struct Kept {
  std::string text;
  bool begins_with_group = false;
  std::string separator;
  bool done = false;
};

// The inputs are numbered as they come (a walk may still be finding
// them): an input's record is made when it begins, under the lock, and
// its thread keeps the record's address, which growing the deque at its
// end leaves alone.
struct Order {
  std::deque<Kept> kept;
  std::atomic<std::size_t> turn{0};
  std::mutex lock;
};

Order* g_order = nullptr;          // while inputs are read on several threads
bool g_group_shown = false;        // in the output's order: touched by the turn's holder only
thread_local std::size_t t_input;  // the input this thread reads
thread_local Kept* t_kept = nullptr;  // its record
thread_local bool t_keeping = false;

void write_direct(std::string_view text) {
  if (!text.empty()) platform::write_stdout(text.data(), text.size());
}

void write_group_start(std::string_view separator) {
  if (g_group_shown) write_direct(separator);
  g_group_shown = true;
}

// The kept text of an input whose turn it is goes out.
void release(Kept& kept) {
  if (kept.begins_with_group) write_group_start(kept.separator);
  write_direct(kept.text);
  kept.text.clear();
  kept.text.shrink_to_fit();
  kept.begins_with_group = false;
}

// Whether this thread's input still writes to its kept text (its turn
// not come); when the turn came meanwhile, the kept text goes out first.
bool keeping() {
  if (!t_keeping) return false;
  if (g_order->turn.load(std::memory_order_acquire) != t_input) return true;
  release(*t_kept);
  t_keeping = false;
  return false;
}

}  // namespace

void write_out(char const* data, std::size_t length) {
  if (keeping()) {
    t_kept->text.append(data, length);
    return;
  }
  platform::write_stdout(data, length);
}

void begin_group(std::string_view separator) {
  if (keeping()) {
    Kept& kept = *t_kept;
    if (kept.text.empty() && !kept.begins_with_group) {
      kept.begins_with_group = true;
      kept.separator = separator;
    } else {
      kept.text.append(separator);  // a later group of the same input
    }
    return;
  }
  write_group_start(separator);
}

OrderedOutput::OrderedOutput() { g_order = new Order; }

OrderedOutput::~OrderedOutput() {
  delete g_order;
  g_order = nullptr;
}

void OrderedOutput::begin(std::size_t index) {
  std::lock_guard<std::mutex> const hold(g_order->lock);
  while (g_order->kept.size() <= index) g_order->kept.emplace_back();
  t_input = index;
  t_kept = &g_order->kept[index];
  t_keeping = true;
}

// The input is read: the turn passes over every input read to the end
// since, their kept text going out.
void OrderedOutput::end() {
  std::lock_guard<std::mutex> const hold(g_order->lock);
  keeping();  // out with what is kept, when the turn is this input's
  t_keeping = false;
  t_kept->done = true;
  std::size_t turn = g_order->turn.load(std::memory_order_relaxed);
  if (turn != t_input) return;
  while (++turn < g_order->kept.size() && g_order->kept[turn].done) release(g_order->kept[turn]);
  g_order->turn.store(turn, std::memory_order_release);
}

}  // namespace zelstr::tool
