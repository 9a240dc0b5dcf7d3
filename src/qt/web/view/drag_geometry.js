// What a drag makes of boxes; numbers only.

/// The box that a handle gives, dragged so far from where it was taken. In `proportion` both measures grow alike.
export function sizedBox(box, handle, right, down, proportion) {
  let width = Math.max(1, box.width + handle.x * right);
  let height = Math.max(1, box.height + handle.y * down);
  if (proportion && box.width && box.height) {
    const wide = width / box.width, high = height / box.height;
    const scale = !handle.y ? wide : !handle.x ? high : Math.max(wide, high);
    width = Math.max(1, box.width * scale);
    height = Math.max(1, box.height * scale);
  }
  return {
    left: handle.x < 0 ? box.left + box.width - width : box.left,
    top: handle.y < 0 ? box.top + box.height - height : box.top,
    width: Math.round(width), height: Math.round(height),
  };
}

export function movedBox(box, right, down) {
  return { left: box.left + right, top: box.top + down, width: box.width, height: box.height };
}

const SCROLL_ZONE = 24;  // near an edge of the window

/// How fast the page scrolls under a drag at a point of the window, to the right and down: the nearer to an edge the
/// faster.
export function scrollPull(x, y, width, height) {
  const pull = (at, end) => at < SCROLL_ZONE ? at - SCROLL_ZONE : at > end - SCROLL_ZONE ? at - end + SCROLL_ZONE : 0;
  const limit = (speed) => Math.max(-SCROLL_ZONE, Math.min(SCROLL_ZONE, speed));
  return { right: limit(pull(x, width)), down: limit(pull(y, height)) };
}

const LEAST_COLUMN = 4;  // no column is dragged narrower

/// The least widths of the cells before and after an edge: what is in their columns takes that much.
function leastOf(column) {
  return [Math.max(column.leastBefore || 0, column.extraBefore + LEAST_COLUMN),
    Math.max(column.leastAfter || 0, column.extraAfter + LEAST_COLUMN)];
}

/// How far forward the edge of a column goes, dragged to the right by so much: never over a column's other end, but
/// where the table `grows` with its columns.
export function columnShift(column, right) {
  const [leastBefore, leastAfter] = leastOf(column);
  const least = Math.min(leastBefore - column.widthBefore, 0);
  const most = column.grows ? Infinity : Math.max(column.widthAfter - leastAfter, 0);
  return Math.round(Math.max(least, Math.min(most, column.sign * right)));
}

/// The widths of the cells before and after an edge that has gone forward by `shift`, without what `width` leaves out.
export function columnWidths(column, shift) {
  const [leastBefore, leastAfter] = leastOf(column);
  return [Math.round(Math.max(column.widthBefore + shift, leastBefore) - column.extraBefore),
    Math.round(Math.max(column.widthAfter - shift, leastAfter) - column.extraAfter)];
}
