#include "host/service_domain.h"

const std::string ServiceDomain = CORVANITE_SERVICE_DOMAIN;
