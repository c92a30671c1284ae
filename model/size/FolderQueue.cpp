// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/size/FolderQueue.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <utility>

namespace MWCore {
namespace {

constexpr int kMostOpen = 64; // leaves most of the usual 1,024 descriptors to the program
constexpr std::chrono::milliseconds kLongestWait(50);

/// @p start and then @p names from last to first, separated by slashes.
QByteArray joined(QByteArray start, std::vector<const QByteArray *> names) {
    qsizetype length = start.size();
    for (const QByteArray *const name : names)
        length += name->size() + 1;
    start.reserve(length);
    std::reverse(names.begin(), names.end());
    for (const QByteArray *const name : names) {
        if (!start.isEmpty() && !start.endsWith('/'))
            start += '/';
        start += *name;
    }
    return start;
}

} // namespace

QByteArray pathOf(const WalkedFolder &folder) {
    std::vector<const QByteArray *> names;
    const WalkedFolder *at = &folder;
    for (; at->parent; at = at->parent)
        names.push_back(&at->name);
    return joined(at->name, std::move(names));
}

bool isPathLonger(const WalkedFolder &folder, qsizetype length) {
    qsizetype found = folder.name.size();
    for (const WalkedFolder *at = folder.parent; at && found <= length; at = at->parent)
        found += at->name.size() + !at->name.endsWith('/');
    return found > length;
}

FolderQueue::FolderQueue(QByteArray path, OpenFolder top)
    : top_(new WalkedFolder), mostOpen_(kMostOpen) {
    top_->name = std::move(path);
    top_->opened = std::move(top);
    top_->users = 1; // this queue
}

FolderQueue::~FolderQueue() {
    for (WalkedFolder *const folder : waiting_)
        release(folder);
    release(top_);
}

FolderQueue::Task FolderQueue::first() {
    const Lock lock(mutex_);
    ++busy_;
    ++top_->users;
    Task task;
    task.folder = top_;
    task.opened = top_->opened;
    return task;
}

FolderQueue::Next FolderQueue::next(Task &task) {
    Lock lock(mutex_);
    if (task.folder)
        finish(task);
    if (isStopped_ || (waiting_.empty() && busy_ == 0))
        return Next::End;
    if (waiting_.empty()) {
        changed_.wait_for(lock, kLongestWait);
        return Next::Waited;
    }
    take(task);
    if (!waiting_.empty())
        changed_.notify_one();
    return Next::Task;
}

void FolderQueue::drop(Task &task) {
    const Lock lock(mutex_);
    task.subfolders.clear();
    if (task.folder)
        finish(task);
}

/// Resets the task.
void FolderQueue::finish(Task &task) {
    WalkedFolder *const folder = task.folder;
    if (!task.subfolders.isEmpty()) {
        folder->subfolders.remove(0, std::exchange(folder->next, 0));
        folder->subfolders += task.subfolders;
        enqueue(folder, task.opened);
    }
    release(folder);
    task = {};
    --busy_;
    if (busy_ == 0)
        changed_.notify_all();
}

void FolderQueue::take(Task &task) {
    WalkedFolder *const folder = waiting_.back();
    ++busy_;
    if (folder->subfolders.isEmpty()) {
        folder->isUnread = false;
        task.folder = folder;
        task.opened = folder->opened;
        task.isShared = true;
        ++folder->users;
    } else {
        const char *const name = folder->subfolders.constData() + folder->next;
        task.folder = new WalkedFolder;
        task.folder->name = name;
        task.folder->parent = folder;
        task.folder->users = 1;
        ++folder->users;
        const auto length = static_cast<qsizetype>(std::strlen(name));
        folder->next += length + 1;
        std::vector<const QByteArray *> names = {&task.folder->name};
        const WalkedFolder *base = folder;
        for (; !base->opened; base = base->parent)
            names.push_back(&base->name);
        task.base = base->opened;
        task.pathFromBase = joined({}, std::move(names));
        if (folder->next == folder->subfolders.size()) {
            folder->subfolders.clear();
            folder->next = 0;
        }
    }
    if (folder->subfolders.isEmpty() && !folder->isUnread) {
        waiting_.pop_back();
        folder->isWaiting = false;
        close(*folder);
        release(folder);
    }
}

void FolderQueue::enqueue(WalkedFolder *folder, const OpenFolder &opened) {
    if (!folder->opened && open_ < mostOpen_) {
        folder->opened = opened;
        ++open_;
    }
    if (std::exchange(folder->isWaiting, true))
        return;
    ++folder->users;
    waiting_.push_back(folder);
}

bool FolderQueue::share(Task &task) {
    const Lock lock(mutex_);
    WalkedFolder *const folder = task.folder;
    if (!folder->opened && open_ >= mostOpen_)
        return false;
    folder->isUnread = true;
    enqueue(folder, task.opened);
    changed_.notify_one();
    return true;
}

/// The descriptor is closed when no task shares it any longer.
void FolderQueue::close(WalkedFolder &folder) {
    if (&folder != top_ && std::exchange(folder.opened, {}))
        --open_;
}

bool FolderQueue::hasWaiting() {
    const Lock lock(mutex_);
    return !waiting_.empty();
}

void FolderQueue::closeWaiting() {
    const Lock lock(mutex_);
    mostOpen_ = 0;
    for (WalkedFolder *const folder : waiting_)
        if (!folder->isUnread)
            close(*folder);
}

void FolderQueue::stop() {
    const Lock lock(mutex_);
    isStopped_ = true;
    changed_.notify_all();
}

/// Iteratively: a tree may have any depth.
void FolderQueue::release(WalkedFolder *folder) {
    while (folder && --folder->users == 0)
        delete std::exchange(folder, folder->parent);
}

} // namespace MWCore
