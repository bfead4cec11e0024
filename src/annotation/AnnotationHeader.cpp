#include <parchlet/Annotation.h>

AnnotationHeader::AnnotationHeader() = default;
AnnotationHeader::AnnotationHeader(const AnnotationHeader& other) = default;
AnnotationHeader& AnnotationHeader::operator=(const AnnotationHeader& other) = default;
AnnotationHeader::~AnnotationHeader() = default;
