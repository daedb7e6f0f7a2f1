// The clone protocol against the simulated radio, in virtual time: what the program itself spends
// on a transfer, the radio's side included.

#include <array>
#include <memory>

#include "link/checksum.h"
#include "link/clone_bench.h"
#include "occupied_memory.h"
#include "operation.h"

namespace memwright::benchmarks {
namespace {

using link_tests::CloneBench;

MemoryImage occupied_image() {
    fakes::MemoryFiles files;
    modVR120 store(files);
    occupy(store);
    return store.MemoryImage;
}

void expect_end(const CloneBench& bench, const std::string& error) {
    if (!error.empty() || bench.control.running())
        throw std::runtime_error("No transfer: " + error);
}

}  // namespace

void add_link(Operations& operations) {
    operations.push_back(
        {"link/checksum", layout::kImageBlocks, true, [] {
             return [image = occupied_image()] {
                 for (std::size_t i = 0; i < layout::kImageBlocks; ++i) {
                     const std::size_t start = i * layout::kBlockSize;
                     use(CalcChecksum(image.bytes(), start, start + layout::kBlockSize - 1));
                 }
             };
         }});
    operations.push_back({"link/read", layout::kImageSize, true, [] {
                              return [image = occupied_image()] {
                                  CloneBench bench(link_tests::sending(), image);
                                  expect_end(bench, bench.click_read());
                              };
                          }});
    operations.push_back({"link/write", layout::kImageSize, true, [] {
                              return [image = occupied_image()] {
                                  CloneBench bench(link_tests::receiving());
                                  bench.open_file(image);
                                  expect_end(bench, bench.click_write());
                              };
                          }});
}

}  // namespace memwright::benchmarks
