"use strict";
// Scenes that turn. One WebGL renderer draws all of them, each when it changes, and copies it to the canvas of its
// figure: a browser has few contexts, a page may have many scenes. What a scene is made of, and in which frame its numbers
// are, is said in SceneParts.h.
(() => {
  const degrees = Math.PI / 180;
  const start = { azimuth: Math.atan2(-2, 1), elevation: Math.asin(1 / Math.sqrt(6)), zoom: 1, panX: 0, panY: 0 };
  // The same in every version of three.js, and faces are told apart by two lights from the side: where a surface faces one,
  // its shade changes by the other.
  const vertexShader = `
    varying vec3 place;
    #ifdef SMOOTH
      varying vec3 turned;
    #endif
    #ifdef VALUES
      attribute float value;
      varying float level;
    #endif
    uniform float dot;
    void main() {
      vec4 seen = modelViewMatrix * vec4(position, 1.0);
      place = seen.xyz;
      #ifdef SMOOTH
        turned = normalMatrix * normal;
      #endif
      #ifdef VALUES
        level = value;
      #endif
      gl_PointSize = dot;
      gl_Position = projectionMatrix * seen;
    }`;
  const fragmentShader = `
    varying vec3 place;
    #ifdef SMOOTH
      varying vec3 turned;
    #endif
    #ifdef VALUES
      varying float level;
      uniform sampler2D scale;
      uniform float stops;
    #endif
    uniform vec3 colour;
    uniform float opacity;
    void main() {
      vec3 shown = colour;
      #ifdef VALUES
        float t = (clamp(level, 0.0, 1.0) * (stops - 1.0) + 0.5) / stops;
        shown = level < -1.0 ? vec3(0.5) : texture2D(scale, vec2(t, 0.5)).rgb;
      #endif
      #ifdef LIT
        #ifdef SMOOTH
          vec3 normal = normalize(turned);
        #else
          vec3 normal = normalize(cross(dFdx(place), dFdy(place)));
        #endif
        if (normal.z < 0.0) normal = -normal;
        float light = 0.7 + 0.37 * dot(normal, vec3(-0.6, 0.7, 0.4)) + 0.05 * normal.x;
        #ifdef VALUES
          light = mix(1.0, light, 0.5);
        #endif
        #ifdef ORIENTED
          if (!gl_FrontFacing) light *= 0.7;
        #endif
        shown *= light;
      #endif
      #ifdef ROUND
        if (length(gl_PointCoord - 0.5) > 0.5) discard;
      #endif
      gl_FragColor = vec4(shown, opacity);
    }`;

  function numbers(base64, Type) {
    if (Uint8Array.fromBase64) return new Type(Uint8Array.fromBase64(base64).buffer);
    const binary = atob(base64);
    const bytes = new Uint8Array(binary.length);
    for (let i = 0; i < bytes.length; ++i) bytes[i] = binary.charCodeAt(i);
    return new Type(bytes.buffer);
  }

  function materialOf(colour, opacity, defines, scale) {
    return new THREE.ShaderMaterial({
      vertexShader, fragmentShader, defines,
      uniforms: {
        colour: { value: new THREE.Vector3(...[1, 3, 5].map((at) => parseInt(colour.slice(at, at + 2), 16) / 255)) },
        opacity: { value: opacity }, dot: { value: 1 },
        scale: { value: scale }, stops: { value: scale ? scale.image.width : 1 },
      },
      extensions: { derivatives: true },
      // Of a round body that lets light through only the near side is seen.
      side: "SMOOTH" in defines && opacity < 1 ? THREE.FrontSide : THREE.DoubleSide,
      transparent: opacity < 1, depthWrite: opacity === 1,
      // Faces step back behind the lines upon them.
      polygonOffset: "LIT" in defines, polygonOffsetFactor: 1, polygonOffsetUnits: 1,
    });
  }

  function scaleTexture(stops) {
    const pixels = stops.flatMap((c) => [1, 3, 5].map((at) => parseInt(c.slice(at, at + 2), 16)).concat(255));
    const texture = new THREE.DataTexture(new Uint8Array(pixels), stops.length, 1, THREE.RGBAFormat);
    texture.minFilter = texture.magFilter = THREE.LinearFilter;
    texture.needsUpdate = true;
    return texture;
  }

  // The triangles that are left when all vertices in a cell of a grid become one of them: what is drawn of a large mesh while
  // it turns, where the whole is slow.
  function coarseIndex(positions, indices) {
    const side = 72;
    const firstOf = new Int32Array(side ** 3).fill(-1);
    const standsFor = new Uint32Array(positions.length / 3);
    const cellOf = (x) => Math.min(side - 1, Math.floor((x + 1) * (side / 2)));
    for (let i = 0; i < standsFor.length; ++i) {
      const cell = (cellOf(positions[3 * i]) * side + cellOf(positions[3 * i + 1])) * side + cellOf(positions[3 * i + 2]);
      if (firstOf[cell] < 0) firstOf[cell] = i;
      standsFor[i] = firstOf[cell];
    }
    const kept = [];
    for (let i = 0; i < indices.length; i += 3) {
      const [a, b, c] = [standsFor[indices[i]], standsFor[indices[i + 1]], standsFor[indices[i + 2]]];
      if (a !== b && b !== c && c !== a) kept.push(a, b, c);
    }
    return new Uint32Array(kept);
  }

  // What is drawn of a part: its elements, and its edges.
  function objectsOf(part, scale) {
    const geometry = new THREE.BufferGeometry();
    geometry.setAttribute("position", new THREE.BufferAttribute(numbers(part.positions, Float32Array), 3));
    if (part.indices) geometry.setIndex(new THREE.BufferAttribute(numbers(part.indices, Uint32Array), 1));
    const defines = {};
    if (part.levels) {
      geometry.setAttribute("value", new THREE.BufferAttribute(numbers(part.levels, Float32Array), 1));
      defines.VALUES = 1;
    }
    if (part.kind === "triangles") defines.LIT = 1;
    if (part.oriented) defines.ORIENTED = 1;
    if (part.kind === "points") defines.ROUND = 1;
    if (part.smooth) {
      defines.SMOOTH = 1;
      geometry.computeVertexNormals();
    }
    const Class = { triangles: THREE.Mesh, lines: THREE.LineSegments, points: THREE.Points }[part.kind];
    const objects = [new Class(geometry, materialOf(part.colour, part.opacity, defines, part.levels && scale))];
    if (part.kind === "triangles" && geometry.index.count > 600000) {
      objects[0].whole = geometry.index;
      objects[0].coarse = new THREE.BufferAttribute(coarseIndex(geometry.attributes.position.array, geometry.index.array), 1);
    }
    for (const [pairs, opacity] of [[part.edges, 0.6], [part.softEdges, 0.2]]) {
      if (!pairs) continue;
      const edges = new THREE.BufferGeometry();
      edges.setAttribute("position", geometry.getAttribute("position"));
      edges.setIndex(new THREE.BufferAttribute(numbers(pairs, Uint32Array), 1));
      objects.push(new THREE.LineSegments(edges, materialOf("#101418", opacity, {})));
    }
    for (const object of objects) {
      object.position.set(...part.at);
      object.scale.setScalar(part.scale);
      object.frustumCulled = false;
    }
    return objects;
  }

  function radiusOf(objects) {
    let radius = 0;
    for (const { geometry, position, scale } of objects) {
      const p = geometry.getAttribute("position").array;
      for (let i = 0; i < p.length; i += 3)
        radius = Math.max(radius, Math.hypot(position.x + scale.x * p[i], position.y + scale.x * p[i + 1],
                                             position.z + scale.x * p[i + 2]));
    }
    return radius || 1;
  }

  // The largest of 1, 2 and 5 times a power of ten that is at most the length.
  function roundLength(length) {
    const power = 10 ** Math.floor(Math.log10(length));
    return Number((power * (length >= 5 * power ? 5 : length >= 2 * power ? 2 : 1)).toPrecision(1));
  }

  class Viewer {
    constructor(figure, renderer) {
      this.canvas = figure.querySelector("canvas");
      this.source = figure.querySelector("script");
      this.renderer = renderer;
      this.bar = document.createElement("div");
      this.bar.className = "bar";
      this.bar.setAttribute("aria-hidden", "true");
      figure.append(this.bar, this.buttons());
      this.pointers = new Map();
      this.reset();
      this.listen();
      new IntersectionObserver((entries) => {
        this.isSeen = entries.some((entry) => entry.isIntersecting);
        this.change();
      }, { rootMargin: "200px" }).observe(this.canvas);
      new ResizeObserver(() => this.change()).observe(this.canvas);
    }

    buttons() {
      const box = document.createElement("div");
      box.className = "buttons";
      const add = (text, label, action) => {
        const button = document.createElement("button");
        button.textContent = text;
        button.setAttribute("aria-label", label);
        button.addEventListener("click", action);
        box.append(button);
      };
      add("+", "Zoom in", () => this.zoomBy(1.25));
      add("−", "Zoom out", () => this.zoomBy(0.8));
      add("⌂", "Begin again", () => this.reset());
      return box;
    }

    reset() {
      this.view = { ...start };
      const turn = /[#&]turn=(-?[\d.]+)/.exec(location.hash);
      if (turn) this.view.azimuth -= Number(turn[1]) * degrees;
      this.change();
    }
    turnBy(right, up) {
      this.view.azimuth -= right * degrees;
      this.view.elevation = Math.min(Math.max(this.view.elevation + up * degrees, -90 * degrees), 90 * degrees);
      this.move();
    }
    zoomBy(factor) {
      this.view.zoom = Math.min(Math.max(this.view.zoom * factor, 0.1), 1000);
      this.move();
    }
    // By pixels of the page.
    moveBy(right, down) {
      const step = (2 * this.halfHeight()) / this.canvas.clientHeight;
      this.view.panX -= right * step;
      this.view.panY += down * step;
      this.move();
    }
    move() {
      this.isMoving = true;
      clearTimeout(this.rest);
      this.rest = setTimeout(() => {
        this.isMoving = false;
        this.change();
      }, 250);
      this.change();
    }

    listen() {
      const { canvas, pointers } = this;
      canvas.addEventListener("pointerdown", (event) => {
        canvas.setPointerCapture(event.pointerId);
        pointers.set(event.pointerId, { x: event.clientX, y: event.clientY });
      });
      for (const end of ["pointerup", "pointercancel"])
        canvas.addEventListener(end, (event) => pointers.delete(event.pointerId));
      canvas.addEventListener("pointermove", (event) => this.drag(event));
      canvas.addEventListener("contextmenu", (event) => event.preventDefault());
      canvas.addEventListener("wheel", (event) => {
        // Until it is chosen, a scene does not stop the page from scrolling.
        if (document.activeElement !== canvas) return;
        event.preventDefault();
        this.zoomBy(Math.exp(-event.deltaY * (event.deltaMode === 1 ? 0.05 : 0.0015)));
      }, { passive: false });
      canvas.addEventListener("keydown", (event) => {
        const action = this.actionOf(event);
        if (!action) return;
        event.preventDefault();
        action();
      });
    }

    drag(event) {
      const last = this.pointers.get(event.pointerId);
      if (!last) return;
      const now = { x: event.clientX, y: event.clientY };
      const [dx, dy] = [now.x - last.x, now.y - last.y];
      const others = [...this.pointers].filter(([id]) => id !== event.pointerId).map(([, place]) => place);
      if (others.length > 0) {
        const span = (place) => Math.hypot(place.x - others[0].x, place.y - others[0].y) || 1;
        this.zoomBy(span(now) / span(last));
        this.moveBy(dx / 2, dy / 2);
      } else if (event.shiftKey || (event.buttons & 6) !== 0) {
        this.moveBy(dx, dy);
      } else {
        this.turnBy(dx / 2, dy / 2);
      }
      this.pointers.set(event.pointerId, now);
    }

    actionOf(event) {
      if (event.ctrlKey || event.metaKey || event.altKey) return undefined;
      const arrow = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] }[event.key];
      if (arrow) return () => (event.shiftKey ? this.moveBy(30 * arrow[0], 30 * arrow[1]) : this.turnBy(10 * arrow[0], 10 * arrow[1]));
      return { "+": () => this.zoomBy(1.25), "=": () => this.zoomBy(1.25), "-": () => this.zoomBy(0.8),
               Home: () => this.reset() }[event.key];
    }

    change() {
      if (this.isWaiting || !this.isSeen) return;
      this.isWaiting = true;
      requestAnimationFrame(() => {
        this.isWaiting = false;
        this.draw();
      });
    }

    load() {
      const data = JSON.parse(this.source.textContent);
      const scale = data.stops && scaleTexture(data.stops);
      this.scene = new THREE.Scene();
      for (const part of data.parts) this.scene.add(...objectsOf(part, scale));
      this.radius = radiusOf(this.scene.children);
      this.unitRadius = data.radius;
      this.unit = data.unit;
      this.camera = new THREE.OrthographicCamera(-1, 1, 1, -1, 0, 1);
    }

    halfHeight() {
      return (1.02 * this.radius) / Math.min(1, this.canvas.clientWidth / this.canvas.clientHeight) / this.view.zoom;
    }

    draw() {
      if (!this.scene) this.load();
      const { canvas, camera, view } = this;
      const ratio = Math.min(window.devicePixelRatio, 2);
      const [width, height] = [canvas.clientWidth, canvas.clientHeight].map((side) => Math.max(1, Math.round(side * ratio)));
      if (canvas.width !== width || canvas.height !== height) [canvas.width, canvas.height] = [width, height];
      const half = this.halfHeight();
      const [cosA, sinA, cosE, sinE] = [Math.cos(view.azimuth), Math.sin(view.azimuth), Math.cos(view.elevation), Math.sin(view.elevation)];
      const right = new THREE.Vector3(-sinA, cosA, 0);
      const up = new THREE.Vector3(-sinE * cosA, -sinE * sinA, cosE);
      const towards = new THREE.Vector3(cosE * cosA, cosE * sinA, sinE);
      // Nothing is cut off, however the scene is turned.
      camera.position.set(0, 0, 0).addScaledVector(right, view.panX).addScaledVector(up, view.panY)
        .addScaledVector(towards, 2 * this.radius);
      camera.quaternion.setFromRotationMatrix(new THREE.Matrix4().makeBasis(right, up, towards));
      camera.left = -(camera.right = (half * width) / height);
      camera.bottom = -(camera.top = half);
      camera.far = 4 * this.radius;
      camera.updateProjectionMatrix();
      for (const { material } of this.scene.children) material.uniforms.dot.value = 5 * ratio;

      const source = this.renderer.domElement;
      if (source.width !== width || source.height !== height) this.renderer.setSize(width, height, false);
      this.render();
      const context = canvas.getContext("2d");
      context.clearRect(0, 0, width, height);
      context.drawImage(source, 0, 0);
      this.drawBar((canvas.clientHeight / 2 / half) / this.unitRadius);
    }

    render() {
      const large = this.scene.children.filter((object) => object.coarse);
      const isCoarse = this.isSlow && this.isMoving;
      for (const object of large) object.geometry.setIndex(isCoarse ? object.coarse : object.whole);
      const begin = performance.now();
      this.renderer.render(this.scene, this.camera);
      if (large.length === 0 || isCoarse) return;
      // To read a pixel waits until all are there.
      const gl = this.renderer.getContext();
      gl.readPixels(0, 0, 1, 1, gl.RGBA, gl.UNSIGNED_BYTE, new Uint8Array(4));
      this.isSlow = performance.now() - begin > 50;
    }

    drawBar(pixelsPerUnit) {
      const length = roundLength(Math.min(120, this.canvas.clientWidth / 3) / pixelsPerUnit);
      this.bar.style.width = `${length * pixelsPerUnit}px`;
      this.bar.textContent = `${length} ${this.unit}`;
    }
  }

  const figures = document.querySelectorAll(".viewer");
  try {
    const renderer = new THREE.WebGLRenderer({ antialias: true, alpha: true });
    renderer.setPixelRatio(1);
    for (const figure of figures) new Viewer(figure, renderer);
  } catch (error) {
    for (const figure of figures) {
      const note = document.createElement("p");
      note.className = "note";
      note.textContent = "This browser cannot draw the model: " + error.message;
      figure.querySelector("canvas").replaceWith(note);
    }
  }
})();
