// The writer of each format. Each adds what it cannot hold to the losses.
#pragma once

#include <formats/graph_listing.h>
#include <formats/losses.h>

#include <string>

namespace nodeline::formats {

[[nodiscard]] std::string WriteText(const GraphListing& listing, Losses& losses);
[[nodiscard]] std::string WriteDot(const GraphListing& listing, Losses& losses);
[[nodiscard]] std::string WriteGraphml(const GraphListing& listing, Losses& losses);
// In the JSON Graph Format, version 2.
[[nodiscard]] std::string WriteJson(const GraphListing& listing, Losses& losses);

}  // namespace nodeline::formats
