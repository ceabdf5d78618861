#pragma once

#include <ostream>
#include <vector>

#include "store/Catalogue.h"

// What `tarvo-check catalogue` prints. Names are bytes of applications: each format makes them visible and harmless.

enum class CatalogueFormat { text, json, csv, html };

void write(const store::Catalogue& catalogue, CatalogueFormat format, std::ostream& out);

// Who uses a method; `what` is the method as it was asked for.
void write(const std::vector<store::Use>& uses, const std::string& what, CatalogueFormat format, std::ostream& out);

// One page with pictures, without script and without anything from elsewhere.
void writePage(const store::Catalogue& catalogue, std::ostream& out);
