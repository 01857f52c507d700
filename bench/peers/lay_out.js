// Lays graphs out with elkjs, one after the other: a line of JSON for each, in and out.
//
//   node lay_out.js < graphs.jsonl
//
// A graph has "nodes" (number, owner or -1, width and height of a node without contents) and "edges"
// (the numbers of both ends). The answer has "boxes", the left, top, width and height of every node in
// the same order, and "ms", the processor time of the layout call.
import { createInterface } from 'node:readline';
import ELK from 'elkjs';

const elk = new ELK();

function elkGraphOf({ nodes, edges }) {
    const options = { 'elk.algorithm': 'layered', 'elk.direction': 'RIGHT' };
    if (nodes.some(([, owner]) => owner >= 0)) {
        options['elk.hierarchyHandling'] = 'INCLUDE_CHILDREN';
    }
    const root = { id: 'root', layoutOptions: options, children: [] };
    const made = new Map([[-1, root]]);
    for (const [number] of nodes) made.set(number, { id: `n${number}` });
    for (const [number, owner] of nodes) {
        const parent = made.get(owner);
        (parent.children ??= []).push(made.get(number));
    }
    for (const [number, , width, height] of nodes) {
        const node = made.get(number);
        if (node.children === undefined) Object.assign(node, { width, height });
    }
    root.edges = edges.map(([from, to], i) => ({
        id: `e${i}`,
        sources: [`n${from}`],
        targets: [`n${to}`],
    }));
    return root;
}

// Positions come relative to the owner.
function collectBoxes(node, left, top, boxes) {
    for (const child of node.children ?? []) {
        const x = left + child.x;
        const y = top + child.y;
        boxes.set(child.id, [x, y, child.width, child.height]);
        collectBoxes(child, x, y, boxes);
    }
    return boxes;
}

for await (const line of createInterface({ input: process.stdin })) {
    const graph = JSON.parse(line);
    const input = elkGraphOf(graph);
    const before = process.cpuUsage();
    const drawing = await elk.layout(input);
    const { user, system } = process.cpuUsage(before);
    const found = collectBoxes(drawing, 0, 0, new Map());
    const boxes = graph.nodes.map(([number]) => found.get(`n${number}`));
    console.log(JSON.stringify({ boxes, ms: (user + system) / 1000 }));
}
