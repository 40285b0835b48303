// Layout of the treemap.

/**
 * Divides an area into one rectangle per weight, as close to squares as rows of them allow. Weights
 * are above zero; the result is best if they descend. Returns [x, y, width, height] for each.
 */
function squarify(weights, width, height) {
  const rectangles = [];
  let [x, y] = [0, 0];
  const scale = width * height / weights.reduce((sum, weight) => sum + weight, 0);
  for (let start = 0; start < weights.length;) {
    const side = Math.min(width, height);
    let area = 0;
    let largest = 0;
    let smallest = Infinity;
    let worst = Infinity;
    let end = start;
    for (; end < weights.length; ++end) {
      const next = weights[end] * scale;
      const grown = area + next;
      largest = Math.max(largest, next);
      smallest = Math.min(smallest, next);
      const ratio = Math.max(side * side * largest / (grown * grown),
                             grown * grown / (side * side * smallest));
      if (ratio > worst) {
        break;
      }
      worst = ratio;
      area = grown;
    }
    const thickness = area / side;
    let along = 0;
    for (; start < end; ++start) {
      const length = weights[start] * scale / thickness;
      rectangles.push(width >= height ? [x, y + along, thickness, length]
                                      : [x + along, y, length, thickness]);
      along += length;
    }
    if (width >= height) {
      x += thickness;
      width = Math.max(width - thickness, 0);
    } else {
      y += thickness;
      height = Math.max(height - thickness, 0);
    }
  }
  return rectangles;
}

/** Places an element in percent of the area, so that it follows the area's size, even in print. */
function setPlace(element, [x, y, width, height], areaWidth, areaHeight) {
  Object.assign(element.style, {
    left: `${100 * x / areaWidth}%`,
    top: `${100 * y / areaHeight}%`,
    width: `${100 * width / areaWidth}%`,
    height: `${100 * height / areaHeight}%`,
  });
}
