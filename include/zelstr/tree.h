// tree.h - trees kept in strings: a call tree of procedures, a folder tree,
// written as one text that prints as it stands.
//
// The text: one node a line, each line ending with LF, indented by two
// blanks for each level below the roots:
//
//   main
//     load_orders
//       read_file
//     report
//
// A name is escaped so that the format's own marks never mislead a reader:
// a backslash is written \\, a line feed \n, a carriage return \r, and a
// blank that begins a name \s.  Names are not empty.
//
// A tree made from (parent, child) pairs knows a node by its name: a node
// that several parents call appears under each of them, with its own
// children each time, and a node that no pair names as a child is a root.
// Roots and children keep the order in which the pairs first name them.
// Pairs that close a cycle (a node its own ancestor) are refused, never
// followed.  The functions that change or read a tree read its text back
// into those pairs (a lone root is a node without any).
//
// Results: new heap copies (release with _zstrdupfree, alloc.h), but for
// the lists of children and parents, which go to the calling thread's clone
// arena (scratch.h).  A text longer than 256 MB is refused.
//
// Warnings: literal (id -1, severity 4):
//   "%s() - Warning: <%s> given in argument is NULL: %s was returned as result."
//   "%s() - Warning: <%s> given in argument is out of range: %s was returned as result."
//   "%s() - Warning: the pairs given in argument form a cycle through '%s': NULL was returned as result."
//   "%s() - Warning: <tree> given in argument is not a tree text (line %d): %s was returned as result."
//   "%s() - Warning: the tree would be longer than 256 MB: NULL was returned as result."
//
// Memory: NULL (or -1) when memory is short, counted (alloc.h).
//
// Threads: any function on any thread; a tree text is the caller's object.
#ifndef ZELSTR_TREE_H
#define ZELSTR_TREE_H

#include "zelstr/export.h"

// The tree of `count` pairs: pairs[2 * i] is a parent, pairs[2 * i + 1]
// its child.  A pair repeated adds nothing.  NULL `pairs` or a NULL or empty
// name, `count` below 0, or a cycle: NULL.
ZELSTR_API char* _zstrbldtree(char const* const* pairs, int count) noexcept;

// The tree of `count` paths such as "db/dbo/orders", each split at
// `separator`: a node is known by its path from the root, so "a/x" and
// "b/x" are two nodes.  Empty parts (a separator doubled, first or last) are
// skipped.  NULL `paths` or a NULL path, `count` below 0, or a separator
// of 0: NULL.
ZELSTR_API char* _zstrbldtreepaths(char const* const* paths, int count, char separator) noexcept;

// `tree` with `child` added under `parent` (a new root `parent` when the
// tree has none of that name), as a new text.  NULL arguments, an empty
// name, a text that is not a tree, or a child that is `parent` or one of
// its ancestors: NULL.
ZELSTR_API char* _zstrtreeaddnode(char const* tree, char const* parent,
                                  char const* child) noexcept;

// The children (or the parents) of `node`, escaped, one a line each ending
// with LF, in the order the text first shows them, in the clone arena: ""
// for a leaf (a root).  NULL when the tree
// has no such node, without a warning; NULL arguments or a text that is not
// a tree: NULL with a warning.
ZELSTR_API char* _zstrtreechildren(char const* tree, char const* node) noexcept;
ZELSTR_API char* _zstrtreeparents(char const* tree, char const* node) noexcept;

// Calls `visit(name, depth, context)` for each line of `tree`, depth first
// as the lines stand (roots at depth 0), with the name unescaped; a visit
// that returns 0 stops the walk (and `visit` must not throw).  The number of nodes visited; -1 for NULL
// `tree` or `visit`, or a text that is not a tree (checked before any
// visit).
ZELSTR_API int _zstrtreewalk(char const* tree, int (*visit)(char const* name, int depth,
                                                           void* context),
                             void* context) noexcept;

#endif  // ZELSTR_TREE_H
