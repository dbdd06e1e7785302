/*
 * Plug-ins of GorbexBuilder on Linux: components whose classes and user controls the component test
 * can create by name. A plug-in is a shared library that exports the one function declared at the
 * end of this file. The page plugins.md tells how to build, register and try one; it is in docs/,
 * and is installed in share/doc/gorbexbuilder/docs.
 *
 * These rules hold for every call:
 *
 * - Threads. The host calls from one thread, and the plug-in calls the host only from that thread,
 *   during a call of the host.
 * - Texts are UTF-8 with a length. The host's texts have a zero byte after their last byte that
 *   the length does not count; a plug-in's texts need none. A text that holds a character which
 *   the code page lacks cannot be shown and counts as a type mismatch.
 * - Ownership. Nothing is ever handed over: what one side passes stays its own, and the other side
 *   copies what it wants to keep. The host's texts, pixels and events are valid until the call
 *   returns; a plug-in's texts must stay valid until the next call for the same instance (for an
 *   error of `create`: until the next call of the plug-in). Tables stay valid while the library is
 *   loaded.
 * - Limits. The host neither passes nor takes a property value longer than GORBEX_TEXT_LIMIT, nor
 *   an error text longer than GORBEX_ERROR_LIMIT; sides of a control are GORBEX_SIDE_LIMIT at most.
 * - Outcomes are GorbexStatus values as int32_t. No C++ exception may leave the plug-in.
 */
#ifndef GORBEX_PLUGIN_H
#define GORBEX_PLUGIN_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The version of this interface. It changes when old plug-ins can no longer be called. Members
 * added after the last one of a table change only the table's `size`. */
enum { GORBEX_PLUGIN_ABI = 1 };

enum {
  GORBEX_TEXT_LIMIT = 1048576, /* bytes */
  GORBEX_ERROR_LIMIT = 4096,   /* bytes */
  GORBEX_SIDE_LIMIT = 16384    /* pixels */
};

/* The numbers are those of the run-time errors that users know. Any other number counts as
 * GORBEX_FAILED. */
enum GorbexStatus {
  GORBEX_OK = 0,
  GORBEX_INVALID_VALUE = 5,
  GORBEX_OUT_OF_MEMORY = 7,
  GORBEX_TYPE_MISMATCH = 13,
  GORBEX_READ_ONLY = 383,
  GORBEX_NO_SUCH_PROPERTY = 438,
  GORBEX_FAILED = 440
};

typedef struct GorbexText {
  const char* bytes; /* may be null when the size is 0 */
  size_t size;
} GorbexText;

/* The memory a control draws into: `height` rows of `width` pixels, the top row first, each pixel
 * an opaque 0x00RRGGBB. Row y begins at first[y * stride]. Pixels between rows are not the
 * control's. */
typedef struct GorbexPixels {
  uint32_t* first;
  uint32_t width;
  uint32_t height;
  size_t stride; /* pixels, at least the width */
} GorbexPixels;

enum GorbexPointerAction { GORBEX_PRESS = 1, GORBEX_RELEASE = 2, GORBEX_MOVE = 3 };

enum GorbexPointerButton {
  GORBEX_NO_BUTTON = 0,
  GORBEX_LEFT_BUTTON = 1,
  GORBEX_RIGHT_BUTTON = 2,
  GORBEX_MIDDLE_BUTTON = 3
};

typedef struct GorbexPointer {
  uint32_t action; /* GorbexPointerAction */
  uint32_t button; /* GorbexPointerButton */
  int32_t x;       /* pixels from the control's top left corner; may be outside it */
  int32_t y;
} GorbexPointer;

/* The functions of the host for an instance. The table is the instance's own, from `create` until
 * `destroy` has returned. */
typedef struct GorbexHost {
  uint32_t size; /* of this table in bytes, as the host knows it */
  void* site;    /* to be handed back to the host's functions */

  /* Asks for a `paint` later; never paints at once. Does nothing for other classes. */
  void (*repaint)(void* site);
} GorbexHost;

/* The functions of a user control, besides its properties. */
typedef struct GorbexControl {
  uint32_t size; /* sizeof(GorbexControl) */

  /* Told whenever the size changes; either side may be 0. A `paint` may come before. */
  int32_t (*set_size)(void* instance, uint32_t width, uint32_t height);

  /* Draws the whole control, as large as the pixels are. */
  int32_t (*paint)(void* instance, const GorbexPixels* to);

  /* Tell what the user does. Null for a control that does not listen. */
  int32_t (*pointer)(void* instance, const GorbexPointer* event);
  int32_t (*key_press)(void* instance, uint32_t character); /* by its Unicode number */
} GorbexControl;

/* One class. The first two members stay where they are in every version of this interface. */
typedef struct GorbexClass {
  uint32_t abi;  /* GORBEX_PLUGIN_ABI */
  uint32_t size; /* sizeof(GorbexClass) */

  /* Makes an instance. On failure `*instance` is not changed and nothing is destroyed. */
  int32_t (*create)(const GorbexHost* host, void** instance);

  /* Frees an instance and all it owns; it cannot fail. */
  void (*destroy)(void* instance);

  /* Properties by name, without regard to letter case. Null for a class without properties. */
  int32_t (*set_property)(void* instance, GorbexText name, GorbexText value);
  int32_t (*get_property)(void* instance, GorbexText name, GorbexText* value);

  /* The words for the call that just failed, empty for the number's own. The instance is null after
   * a failed `create`. May be null itself. */
  GorbexText (*last_error)(void* instance);

  /* Null for a class that is not a user control. */
  const GorbexControl* control;
} GorbexClass;

#if defined(__GNUC__)
#define GORBEX_EXPORT __attribute__((visibility("default")))
#else
#define GORBEX_EXPORT
#endif

/*
 * The plug-in's one exported function: the class of a CLSID, or null when the plug-in has no such
 * class. The CLSID is in upper case with its braces. A plug-in that was made for another version of
 * the interface than `host_abi` still hands out its own tables: the host looks at `abi`.
 */
GORBEX_EXPORT const GorbexClass* gorbex_plugin_class(uint32_t host_abi, const char* clsid);

#ifdef __cplusplus
}
#endif

#endif
