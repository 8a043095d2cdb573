// The picture library that is built for Windows: the version that files of pictures are made with, and that it works.
#include <cstdio>
#include <cstdlib>
#include <vector>
// The library's header needs the types above it.
#include <jpeglib.h>

#include "gtest/gtest.h"

namespace {

constexpr unsigned kWidth = 64;
constexpr unsigned kHeight = 48;

std::vector<unsigned char> Encode(std::vector<unsigned char> pixels) {
  jpeg_compress_struct encoder = {};
  jpeg_error_mgr errors = {};
  encoder.err = jpeg_std_error(&errors);
  jpeg_create_compress(&encoder);
  unsigned char* bytes = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&encoder, &bytes, &size);
  encoder.image_width = kWidth;
  encoder.image_height = kHeight;
  encoder.input_components = 3;
  encoder.in_color_space = JCS_RGB;
  jpeg_set_defaults(&encoder);
  jpeg_set_quality(&encoder, 100, TRUE);
  jpeg_start_compress(&encoder, TRUE);
  for (unsigned row = 0; row < kHeight; ++row) {
    JSAMPROW line = &pixels[row * kWidth * 3];
    jpeg_write_scanlines(&encoder, &line, 1);
  }
  jpeg_finish_compress(&encoder);
  jpeg_destroy_compress(&encoder);
  std::vector<unsigned char> file(bytes, bytes + size);
  std::free(bytes);
  return file;
}

std::vector<unsigned char> Decode(const std::vector<unsigned char>& file) {
  jpeg_decompress_struct decoder = {};
  jpeg_error_mgr errors = {};
  decoder.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&decoder);
  jpeg_mem_src(&decoder, file.data(), static_cast<unsigned long>(file.size()));
  jpeg_read_header(&decoder, TRUE);
  jpeg_start_decompress(&decoder);
  std::vector<unsigned char> pixels(static_cast<std::size_t>(decoder.output_width) * decoder.output_height * 3);
  while (decoder.output_scanline < decoder.output_height) {
    JSAMPROW line = &pixels[decoder.output_scanline * decoder.output_width * 3];
    jpeg_read_scanlines(&decoder, &line, 1);
  }
  jpeg_finish_decompress(&decoder);
  jpeg_destroy_decompress(&decoder);
  return pixels;
}

TEST(JpegTest, TheLibraryIsVersion62AndGivesPicturesBack) {
  static_assert(JPEG_LIB_VERSION == 62);
  std::vector<unsigned char> pixels;
  for (unsigned row = 0; row < kHeight; ++row) {
    for (unsigned column = 0; column < kWidth; ++column) {
      for (const unsigned sample : {column * 4, row * 4, 128u}) pixels.push_back(static_cast<unsigned char>(sample));
    }
  }
  // The library that is linked checks the version of the header it is called with.
  const std::vector<unsigned char> back = Decode(Encode(pixels));
  ASSERT_EQ(back.size(), pixels.size());
  for (std::size_t i = 0; i < pixels.size(); ++i) EXPECT_NEAR(back[i], pixels[i], 16) << i;
}

}  // namespace
