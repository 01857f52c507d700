// Lays a graph out with elkjs, and prints the drawing with the time of the layout call.
//
//   bench-quality graph FILE | node draw_elkjs.js SECONDS
//
// Graph and drawing are in the lines of `bench-quality`. The time is the user time of the last of
// several calls, so that the program is warm. It ends with status 3 if one call takes longer than
// SECONDS, which it notices after the call.
import { readFileSync } from 'node:fs';
import ELK from 'elkjs';

const WARM_UP_MS = 3000;
const limit = 1000 * Number(process.argv[2]);

function readGraph() {
    const graph = { nodes: [], edges: [] };
    for (const line of readFileSync(0, 'utf8').split('\n')) {
        const [kind, number, ...values] = line.split(' ');
        if (kind === 'n') graph.nodes[number] = values.map(Number);
        if (kind === 'e') graph.edges[number] = values.map(Number);
    }
    return graph;
}

function elkGraphOf({ nodes, edges }) {
    const options = {
        'elk.algorithm': 'layered',
        'elk.direction': 'RIGHT',
        'elk.json.shapeCoords': 'ROOT',
        'elk.json.edgeCoords': 'ROOT',
    };
    if (nodes.some(([owner]) => owner >= 0)) options['elk.hierarchyHandling'] = 'INCLUDE_CHILDREN';
    const root = { id: 'root', layoutOptions: options, children: [] };
    const made = nodes.map((_, i) => ({ id: `n${i}` }));
    nodes.forEach(([owner], i) => {
        const parent = owner < 0 ? root : made[owner];
        (parent.children ??= []).push(made[i]);
    });
    nodes.forEach(([, width, height], i) => {
        if (made[i].children === undefined) Object.assign(made[i], { width, height });
    });
    root.edges = edges.map(([from, to], i) => ({
        id: `e${i}`,
        sources: [`n${from}`],
        targets: [`n${to}`],
    }));
    return root;
}

// All nodes by id; the stack is not asked to be as deep as the nesting.
function nodesOf(drawing) {
    const nodes = new Map();
    const open = [drawing];
    while (open.length > 0) {
        const node = open.pop();
        nodes.set(node.id, node);
        open.push(...(node.children ?? []));
    }
    return nodes;
}

function pointsOf(edge) {
    return (edge.sections ?? []).flatMap(({ startPoint, bendPoints, endPoint }) => [
        startPoint,
        ...(bendPoints ?? []),
        endPoint,
    ]);
}

function linesOf(graph, drawing, ms) {
    const nodes = nodesOf(drawing);
    const lines = [`t ${ms}`];
    graph.nodes.forEach(([owner], i) => {
        const { x, y, width, height } = nodes.get(`n${i}`);
        lines.push(`n ${i} ${owner} ${x} ${y} ${width} ${height}`);
    });
    drawing.edges.forEach((edge, i) => {
        const numbers = pointsOf(edge).flatMap(({ x, y }) => [x, y]);
        lines.push(['r', i, ...graph.edges[i], ...numbers].join(' '));
    });
    return lines;
}

const graph = readGraph();
const elk = new ELK();
let total = 0;
let ms = 0;
let drawing;
do {
    const input = elkGraphOf(graph);
    const before = process.cpuUsage();
    drawing = await elk.layout(input);
    ms = process.cpuUsage(before).user / 1000;
    total += ms;
} while (total < WARM_UP_MS);
if (ms > limit) process.exit(3);
process.stdout.write(linesOf(graph, drawing, ms).join('\n') + '\n');
