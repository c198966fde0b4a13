#include "platform/XmlDocument.h"

#include "platform/PlatformError.h"

#include <cassert>
#include <cstring>

namespace shotweaver {

namespace {

[[noreturn]] void refuseSize() {
    throw PlatformError("The XML is too large to be read.");
}

} // namespace

template <class Record>
std::uint32_t XmlDocument::Records<Record>::add(const Record& record) {
    if (size_ == none) refuseSize();
    if (size_ % blockSize == 0)
        blocks_.push_back(std::make_unique_for_overwrite<Record[]>(blockSize));
    blocks_.back()[size_ % blockSize] = record;
    return size_++;
}

std::uint32_t XmlDocument::Texts::add(std::string_view text) {
    const std::size_t size = text.size() + 1;
    if (end_ % blockSize + size > blockSize || end_ % blockSize == 0) {
        end_ = std::uint64_t{blockSize} * blocks_.size();
        const std::size_t count = (size + blockSize - 1) / blockSize;
        memory_.push_back(std::make_unique_for_overwrite<char[]>(count * blockSize));
        for (std::size_t block = 0; block < count; ++block)
            blocks_.push_back(memory_.back().get() + block * blockSize);
    }
    if (end_ + size > none) refuseSize();
    const auto place = static_cast<std::uint32_t>(end_);
    char* const start = blocks_[place / blockSize] + place % blockSize;
    text.copy(start, text.size());
    start[text.size()] = '\0';
    end_ += size;
    return place;
}

XmlDocument::XmlDocument(const XmlVocabulary& vocabulary) : textHolders_(vocabulary.textHolders) {
    for (const std::string_view name : vocabulary.names)
        number(name);
    assert(names_.size() == vocabulary.names.size());
    nodes_.add(Node{.kind = XmlKind::document, .name = 0});
}

XmlName XmlDocument::number(std::string_view name) {
    const auto known = numbers_.find(name);
    if (known != numbers_.end()) return known->second;
    if (names_.size() > Node::lastName) refuseSize();
    const auto number = static_cast<XmlName>(names_.size());
    names_.emplace_back(texts_[texts_.add(name)], name.size());
    numbers_.emplace(names_.back(), number);
    return number;
}

XmlNode XmlDocument::insert(XmlNode parent, XmlNode previous, XmlKind kind, std::string_view name,
                            std::string_view value) {
    const bool hasName = kind == XmlKind::element || kind == XmlKind::instruction;
    Node node{.kind = kind, .name = (hasName ? number(name) : 0) & Node::lastName};
    if (kind != XmlKind::element) node.content = texts_.add(value);
    std::uint32_t& link =
        previous ? nodes_[previous.index_].next : nodes_[parent.index_].firstChild;
    node.next = link;
    return {this, link = nodes_.add(node)};
}

void XmlDocument::addAttribute(std::string_view name, std::string_view value) {
    const std::uint32_t index = attributes_.add(
        {.isLast = true, .name = number(name) & Node::lastName, .value = texts_.add(value)});
    Node& element = nodes_[nodes_.size() - 1];
    assert(element.kind == XmlKind::element);
    if (element.content == none)
        element.content = index;
    else
        attributes_[index - 1].isLast = false;
}

XmlNode XmlDocument::documentElement() const {
    XmlNode child = root().firstChild();
    while (child && !child.isElement())
        child = child.next();
    return child;
}

std::string_view XmlNode::name() const {
    if (!isElement() && !(*this && kind() == XmlKind::instruction)) return {};
    return document_->names_[document_->node(*this).name];
}

std::string_view XmlNode::value() const {
    if (!*this || kind() == XmlKind::element || kind() == XmlKind::document) return {};
    return document_->texts_[document_->node(*this).content];
}

bool XmlNode::holdsText() const {
    return isElement() && document_->node(*this).name < document_->textHolders_;
}

std::optional<std::string_view> XmlNode::attribute(XmlName name) const {
    for (const XmlAttribute each : attributes()) {
        if (each.nameNumber() == name) return each.value();
    }
    return std::nullopt;
}

std::optional<std::string_view> XmlNode::attribute(std::string_view name) const {
    for (const XmlAttribute each : attributes()) {
        if (each.name() == name) return each.value();
    }
    return std::nullopt;
}

} // namespace shotweaver
