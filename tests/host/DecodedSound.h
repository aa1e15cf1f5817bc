#pragma once

// What a player makes of a sound file, and what the file says of itself.
//
//   DecodedSound sound = decodedSound("Talk.m4a");
//   sound.samples.size() / sound.rate;      // seconds

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace Varnelle::Tests {

struct DecodedSound {
    std::string format;  ///< the container's name
    int rate = 0;        ///< samples/s
    int channels = 0;
    double duration = 0;         ///< seconds, as the file says it
    std::string madeAt;          ///< the file's creation time
    std::vector<float> samples;  ///< of the first channel, from the first one that is shown
};

inline DecodedSound decodedSound(const std::filesystem::path& file) {
    DecodedSound sound;
    AVFormatContext* container = nullptr;
    if (avformat_open_input(&container, file.c_str(), nullptr, nullptr) != 0 ||
        avformat_find_stream_info(container, nullptr) < 0 || container->nb_streams != 1) {
        ADD_FAILURE() << file << " is no sound";
        avformat_close_input(&container);
        return sound;
    }
    const AVStream* const stream = container->streams[0];
    const AVCodec* const codec = avcodec_find_decoder(stream->codecpar->codec_id);
    AVCodecContext* decoder = avcodec_alloc_context3(codec);
    avcodec_parameters_to_context(decoder, stream->codecpar);
    decoder->pkt_timebase = stream->time_base;
    EXPECT_EQ(avcodec_open2(decoder, codec, nullptr), 0);
    sound.format = container->iformat->long_name;
    sound.rate = stream->codecpar->sample_rate;
    sound.channels = stream->codecpar->ch_layout.nb_channels;
    sound.duration = static_cast<double>(stream->duration) * av_q2d(stream->time_base);
    const AVDictionaryEntry* const made =
        av_dict_get(container->metadata, "creation_time", nullptr, 0);
    if (made != nullptr) sound.madeAt = made->value;

    AVPacket* packet = av_packet_alloc();
    AVFrame* frame = av_frame_alloc();
    bool isEnd = false;
    while (!isEnd) {
        isEnd = av_read_frame(container, packet) < 0;
        EXPECT_EQ(avcodec_send_packet(decoder, isEnd ? nullptr : packet), 0);
        av_packet_unref(packet);
        while (avcodec_receive_frame(decoder, frame) == 0) {
            const auto* const plane = reinterpret_cast<const float*>(frame->data[0]);
            sound.samples.insert(sound.samples.end(), plane, plane + frame->nb_samples);
        }
    }
    av_frame_free(&frame);
    av_packet_free(&packet);
    avcodec_free_context(&decoder);
    avformat_close_input(&container);
    return sound;
}

}  // namespace Varnelle::Tests
