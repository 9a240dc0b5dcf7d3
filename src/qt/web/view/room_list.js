// Which children of a large element stand in which room. A room is a stretch of the children, in their order; every
// child is in one. What may begin a room is asked of who knows styles.

export const WANTED = 48;       // children of a room
export const MOST = 2 * WANTED; // then it is divided
const MOST_OF_ALL = 20_000;      // nodes that the engine takes at once: then it is torn

/// Counts what comes in before the same child.
function countBefore(room, before) {
  if (!room.coming || room.coming.before !== before) room.coming = { before, count: 0 };
  ++room.coming.count;
}

export class RoomList {
  rooms = [];            // { children, ... } in the order of their children
  dirty = new Set();     // rooms that have changed
  #roomOf = new WeakMap();
  #refused = new WeakSet();  // seemed to be able to begin a room, and can't

  roomOf(node) {
    return this.#roomOf.get(node) || null;
  }

  /// A child that has come. What comes before the first of a room ends the room before: it may be a text, which would
  /// be torn from the line that it continues.
  add(node, before) {
    let room = before ? this.roomOf(before) : this.rooms[this.rooms.length - 1];
    if (!room) room = this.#newRoom(this.rooms.length);
    let at = before ? room.children.indexOf(before) : room.children.length;
    if (before && at === 0 && room !== this.rooms[0]) {
      room = this.rooms[this.rooms.indexOf(room) - 1];
      at = room.children.length;
    }
    if (before && at < room.children.length) countBefore(room, before);
    room.children.splice(at, 0, node);
    this.#roomOf.set(node, room);
    this.dirty.add(room);
  }

  remove(node) {
    const room = this.roomOf(node);
    if (!room) return;
    room.children.splice(room.children.indexOf(node), 1);
    this.#roomOf.delete(node);
    this.dirty.add(room);
  }

  /// A child that is another one than before.
  touch(node) {
    const room = this.roomOf(node);
    if (room) this.dirty.add(room);
  }

  /// Divides rooms that have grown, at children that seem to be able to begin one.
  divide(mayBegin) {
    const waiting = [...this.dirty];
    for (const room of waiting) {
      const start = this.#startOfRest(room, mayBegin);
      if (start > 0) waiting.push(this.#putBefore(room, start));
      if (room.children.length <= MOST) continue;
      const starts = [0];
      room.children.forEach((node, i) => {
        const count = i - starts[starts.length - 1];
        const begins = count >= WANTED && !this.#refused.has(node) && mayBegin(node);
        if (begins || count >= MOST_OF_ALL) starts.push(i);
      });
      const index = this.rooms.indexOf(room), { children } = room;
      starts.forEach((start, i) => {
        this.#fill(i === 0 ? room : this.#newRoom(index + i), children.slice(start, starts[i + 1]));
      });
    }
  }

  /// Gives the room before it what stands at a room's start and can't begin one. A room that is empty goes.
  mend(room, canBegin) {
    const index = this.rooms.indexOf(room);
    if (index < 0) return;
    const before = this.rooms[index - 1];
    let count = 0;
    while (before && count < room.children.length && !canBegin(room.children[count])) ++count;
    room.isTorn = count > 0 && before.children.length + count > MOST_OF_ALL;
    if (count > 0 && !room.isTorn) {
      const moved = room.children.slice(0, count);
      for (const node of moved) this.#refused.add(node);
      this.#fill(before, before.children.concat(moved));
      this.#fill(room, room.children.slice(count));
    }
    if (room.children.length > 0) return;
    this.rooms.splice(index, 1);
    this.dirty.add(room);
  }

  /// Ends the first room before one of its children: those that follow begin the next one.
  endFirst(at) {
    const [first, second] = this.rooms, rest = first.children.slice(at);
    this.#fill(first, first.children.slice(0, at));
    if (second && second.children.length + rest.length <= MOST) this.#fill(second, rest.concat(second.children));
    else this.#fill(this.#newRoom(1), rest);
  }

  /// What can begin a room may have changed.
  forgetRefusals() {
    this.#refused = new WeakSet();
    for (const room of this.rooms) if (room.children.length > MOST) this.dirty.add(room);
  }

  /// Where much has come in before one child, that child begins the room, if it can: what follows it may be in the window,
  /// and keeps the box that it stands in, by which the engine keeps it where it is.
  #startOfRest(room, mayBegin) {
    const { coming } = room;
    if (!coming || coming.count < WANTED / 2) return 0;
    room.coming = null;
    const at = room.children.indexOf(coming.before);
    if (at < 0) return 0;
    return room.children.findIndex((node, i) => i >= at && !this.#refused.has(node) && mayBegin(node));
  }

  /// A room before this one for its children up to one of them.
  #putBefore(room, at) {
    const front = this.#newRoom(this.rooms.indexOf(room));
    this.#fill(front, room.children.slice(0, at));
    this.#fill(room, room.children.slice(at));
    return front;
  }

  #newRoom(index) {
    const room = { children: [] };
    this.rooms.splice(index, 0, room);
    return room;
  }

  #fill(room, children) {
    room.children = children;
    for (const node of children) this.#roomOf.set(node, room);
    this.dirty.add(room);
  }
}
