#include "platform/services.h"

namespace platform {

namespace {
Services g_services;
}

Services &services() { return g_services; }

Services install(const Services &set)
{
    Services previous = g_services;
    g_services = set;
    return previous;
}

} // namespace platform
