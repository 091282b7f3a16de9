/* The binary interface between a page server and components from separately built libraries:
 * late-bound objects behind a C header. TarloQuery is offered through it (libtarloquery.so), and
 * `tarloquery serve` creates objects of other libraries through it, in the place of its own where
 * they are registered under the same name.
 *
 * A library exports the four module entry points declared at the end. A registry file names the
 * classes that may be created, one line each: program id, class id and the library's absolute path,
 * separated by tabs.
 *
 * Objects are counted; values are owned by whoever holds them. All text is UTF-8. Memory that
 * crosses the interface comes from malloc and is given back by tarlo_clear. No exception crosses
 * it. A call runs on its caller's thread, and the objects of a page belong to the thread of that
 * page. */
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <stdlib.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct tarlo_object tarlo_object;

/* What a value holds. The number in brackets is the member of `as`. */
enum tarlo_kind {
  TARLO_EMPTY = 0,
  TARLO_NULL = 1,
  TARLO_TEXT = 2,  /* text */
  TARLO_INT16 = 3, /* integer, as the next two */
  TARLO_INT32 = 4,
  TARLO_INT64 = 5,
  TARLO_DOUBLE = 6,  /* number */
  TARLO_DECIMAL = 7, /* text: an exact decimal number, "-12.5" */
  TARLO_BOOLEAN = 8, /* integer: 0 or 1 */
  TARLO_DATE = 9,    /* number: days since 1899-12-30 */
  TARLO_ARRAY = 10,  /* array */
  TARLO_OBJECT = 11  /* object, one reference; NULL is Nothing */
};

typedef struct tarlo_text {
  char* data;  /* NULL for "" */
  size_t size; /* in bytes; no 0 stands behind */
} tarlo_text;

typedef struct tarlo_variant {
  int32_t kind;
  int32_t reserved; /* 0 */
  union {
    tarlo_text text;
    int64_t integer;
    double number;
    struct tarlo_array* array;
    tarlo_object* object;
  } as;
} tarlo_variant;

/* Every lower bound is 0; the first index runs fastest. */
typedef struct tarlo_array {
  size_t rank;
  int64_t* upper_bounds; /* `rank` of them */
  size_t count;
  tarlo_variant* elements; /* `count` of them */
} tarlo_array;

/* A run-time error: the number is one of the pages' language, or above 1000 the server's own. */
typedef struct tarlo_error {
  int32_t number;
  tarlo_text description;
  tarlo_text source;
} tarlo_error;

enum tarlo_status {
  TARLO_OK = 0,
  TARLO_RAISED = 1,       /* the error is filled */
  TARLO_PAGE_ENDED = 2,   /* Response.End: clean up and hand this on to the caller at once */
  TARLO_NO_SUCH_NAME = 3, /* a member name or id that the object does not have */
  TARLO_NO_SUCH_CLASS = 4,
  TARLO_FAILED = 5 /* out of memory, a file that cannot be written */
};

enum tarlo_access {
  TARLO_GET = 1,
  TARLO_PUT = 2, /* the last argument is the value; those before it are indexes */
  TARLO_CALL = 4
};

/* The id of an object's default member, whose name is "": Request("id") is its GET with one
 * argument. */
#define TARLO_DEFAULT_MEMBER 0

typedef struct tarlo_object_functions {
  void (*add_reference)(tarlo_object* self);
  void (*release)(tarlo_object* self); /* the last one deletes the object */
  /* Names match without regard to case. Ids are valid for this object. */
  int32_t (*id_of)(tarlo_object* self, const char* name, size_t size, int32_t* id);
  /* Arguments are passed by reference and may be replaced. `result` and `error` are EMPTY and 0
   * before; the caller clears both. */
  int32_t (*invoke)(tarlo_object* self, int32_t id, int32_t access, tarlo_variant* arguments,
                    size_t count, tarlo_variant* result, tarlo_error* error);
} tarlo_object_functions;

/* An implementation begins with this and keeps what it needs behind it. */
struct tarlo_object {
  const tarlo_object_functions* functions;
};

typedef struct tarlo_class_factory tarlo_class_factory;
typedef struct tarlo_class_factory_functions {
  void (*add_reference)(tarlo_class_factory* self);
  void (*release)(tarlo_class_factory* self);
  int32_t (*create)(tarlo_class_factory* self, tarlo_object** object); /* with one reference */
} tarlo_class_factory_functions;

struct tarlo_class_factory {
  const tarlo_class_factory_functions* functions;
};

/* Lets go of what a value holds and makes it EMPTY. */
static inline void tarlo_clear(tarlo_variant* value) {
  if (value->kind == TARLO_TEXT || value->kind == TARLO_DECIMAL) free(value->as.text.data);
  if (value->kind == TARLO_OBJECT && value->as.object)
    value->as.object->functions->release(value->as.object);
  if (value->kind == TARLO_ARRAY && value->as.array) {
    size_t i;
    for (i = 0; i < value->as.array->count; ++i) tarlo_clear(&value->as.array->elements[i]);
    free(value->as.array->elements);
    free(value->as.array->upper_bounds);
    free(value->as.array);
  }
  value->kind = TARLO_EMPTY;
  value->as.text.data = NULL;
  value->as.text.size = 0;
}

static inline void tarlo_clear_error(tarlo_error* error) {
  free(error->description.data);
  free(error->source.data);
  error->number = 0;
  error->description.data = error->source.data = NULL;
  error->description.size = error->source.size = 0;
}

/* The module entry points. */

/* The factory of a class, with one reference. TARLO_NO_SUCH_CLASS for an id that is not this
 * library's; ids are in braces, hexadecimal digits in either case. */
typedef int32_t tarlo_get_class_object(const char* class_id, tarlo_class_factory** factory);
/* 1 when no object and no factory of this library lives, else 0. */
typedef int32_t tarlo_can_unload_now(void);
/* Writes this library's lines into the registry file that the environment variable TARLO_REGISTRY
 * names, or takes them out. Lines of other classes stay. */
typedef int32_t tarlo_register_server(void);

#define TARLO_DEFAULT_REGISTRY "/etc/tarloquery/registry"

#if defined(__GNUC__)
#define TARLO_EXPORT __attribute__((visibility("default")))
#else
#define TARLO_EXPORT
#endif

TARLO_EXPORT tarlo_get_class_object DllGetClassObject;
TARLO_EXPORT tarlo_can_unload_now DllCanUnloadNow;
TARLO_EXPORT tarlo_register_server DllRegisterServer;
TARLO_EXPORT tarlo_register_server DllUnregisterServer;

#ifdef __cplusplus
}
#endif
