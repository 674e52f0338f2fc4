// How far two pictures are apart, with room for what drivers round differently.
#pragma once

#include <QImage>

struct PictureDifference {
    double worstChannelMean = 255.0;  // mean absolute difference of the worst of red, green and blue, 0..255
    double farShare = 1.0;            // part of the pixels with a channel that is more than kFarStep off
};

constexpr int kFarStep = 24;
constexpr double kMaxChannelMean = 3.0;
constexpr double kMaxFarShare = 0.02;

// Both extremes for pictures of different sizes or without pixels.
PictureDifference ComparePictures(const QImage& left, const QImage& right);

bool IsAlike(const PictureDifference& difference);

// The widest range from the smallest to the largest value of one channel; 0 for one flat colour.
int WidestChannelRange(const QImage& picture);
