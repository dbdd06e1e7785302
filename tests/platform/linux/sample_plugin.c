/* Classes that keep the contract and break it, told apart by the first letter of their CLSID. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <strings.h>

#include "gorbex_plugin.h"

typedef struct Sample {
  const GorbexHost* host;
  const char* trouble;
  char text[32];
} Sample;

static char kind; /* of the class that was asked for last */

static GorbexText TextOf(const char* bytes) {
  return (GorbexText){bytes, bytes == NULL ? 0 : strlen(bytes)};
}

static int32_t Create(const GorbexHost* host, void** instance) {
  Sample* sample = kind == 'F' ? NULL : calloc(1, sizeof(Sample));
  if (sample == NULL) return GORBEX_OUT_OF_MEMORY;
  sample->host = host;
  *instance = sample;
  return GORBEX_OK;
}

static GorbexText LastError(void* instance) {
  return TextOf(instance == NULL ? "no paper" : ((Sample*)instance)->trouble);
}

static int32_t SetProperty(void* instance, GorbexText name, GorbexText value) {
  Sample* sample = instance;
  sample->trouble = NULL;
  if (strcasecmp(name.bytes, "Size") == 0) return GORBEX_READ_ONLY;
  if (strcasecmp(name.bytes, "Text") != 0) return GORBEX_NO_SUCH_PROPERTY;
  if (value.size >= sizeof sample->text) return GORBEX_TYPE_MISMATCH;
  memcpy(sample->text, value.bytes, value.size + 1);
  sample->host->repaint(sample->host->site);
  return GORBEX_OK;
}

static int32_t GetProperty(void* instance, GorbexText name, GorbexText* value) {
  Sample* sample = instance;
  if (strcasecmp(name.bytes, "Text") == 0) *value = TextOf(sample->text);
  if (strcmp(name.bytes, "Long") == 0) *value = (GorbexText){"", GORBEX_TEXT_LIMIT + 1};
  sample->trouble = value->bytes == NULL ? "paper jam" : NULL;
  return value->bytes == NULL ? 4711 : GORBEX_OK;
}

static int32_t SetSize(void* instance, uint32_t width, uint32_t height) {
  snprintf(((Sample*)instance)->text, sizeof((Sample*)instance)->text, "%ux%u", width, height);
  return GORBEX_OK;
}

/* What is typed takes the place of the size. */
static int32_t KeyPress(void* instance, uint32_t character) {
  Sample* sample = instance;
  const size_t length = strchr(sample->text, 'x') == NULL ? strlen(sample->text) : 0;
  snprintf(sample->text + length, sizeof sample->text - length, "%c", (char)character);
  sample->host->repaint(sample->host->site);
  return GORBEX_OK;
}

/* A white frame around the colour that is the text. */
static int32_t Paint(void* instance, const GorbexPixels* to) {
  const uint32_t inside = (uint32_t)strtoul(((Sample*)instance)->text, NULL, 16);
  for (uint32_t i = 0; i < to->width * to->height; ++i) {
    const uint32_t x = i % to->width, y = i / to->width;
    const int isInside = x > 0 && y > 0 && x + 1 < to->width && y + 1 < to->height;
    to->first[y * to->stride + x] = isInside ? inside : 0xFFFFFF;
  }
  return GORBEX_OK;
}

const GorbexClass* gorbex_plugin_class(uint32_t host_abi, const char* clsid) {
  static GorbexControl control = {sizeof control, SetSize, Paint, NULL, KeyPress};
  static GorbexClass table = {0, 0, Create, free, SetProperty, GetProperty, LastError, &control};
  kind = clsid[1];
  table.abi = kind == 'C' ? 7 : host_abi;
  table.size = kind == 'D' ? 8 : sizeof table;
  table.control = kind == 'A' ? NULL : &control;
  control.paint = kind == 'E' ? NULL : Paint;
  return kind >= 'A' && kind <= 'F' ? &table : NULL;
}
